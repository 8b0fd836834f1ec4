#include "terminal/parameters/ParameterReader.h"

#include "platform/Split.h"
#include "platform/Text.h"
#include "terminal/parameters/StudyLines.h"
#include "terminal/quotes/CsvReader.h"
#include "terminal/studies/StudyCatalogue.h"

#include <QStringDecoder>

#include <algorithm>
#include <iterator>

namespace ta::terminal {
namespace {

using namespace parameterfile;
using Fault = std::optional<ParameterFault>;

bool IsUtf8(std::string_view line) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    [[maybe_unused]] const QString decoded =
        decoder.decode(QByteArrayView(line.data(), static_cast<qsizetype>(line.size())));
    return !decoder.hasError();
}

/// The first line that is not text in UTF-8.
Fault EncodingFault(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
        return ParameterFault{"IDS_TERMINAL-PARAMETERS_NOT_UTF8", {}, 1};
    }
    std::size_t number = 0;
    for (const std::string_view line : text::Split(bytes, '\n')) {
        ++number;
        if (line.find('\0') != std::string_view::npos) {
            return ParameterFault{"IDS_TERMINAL-PARAMETERS_NUL", {}, number};
        }
        if (!IsUtf8(line)) {
            return ParameterFault{"IDS_TERMINAL-PARAMETERS_NOT_UTF8", {}, number};
        }
    }
    return std::nullopt;
}

/// What follows the first cell.
char SeparatorOf(std::string_view text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    const std::size_t found = line.find_first_of(",;\t");
    return found == std::string_view::npos ? ',' : line[found];
}

const StudyDefinition* FindStudy(std::string_view englishName) {
    for (const StudyInfo* info : AllStudies()) {
        if (text::ToUtf8(info->cszGetEnglishName()) == englishName) {
            return FindStudyDefinition(info->GetStudyType());
        }
    }
    return nullptr;
}

class Reader {
public:
    explicit Reader(std::string_view text) : m_csv(text, SeparatorOf(text)) {}

    ParameterFile Read() {
        ParameterFile file;
        file.fault = ReadAll();
        if (file.fault && file.fault->line == 0) {
            file.fault->line = std::max<std::size_t>(m_csv.Line(), 1);
        }
        if (!file.fault) {
            std::ranges::transform(m_studies, std::back_inserter(file.studies),
                                   &StudyLines::Settings);
        }
        return file;
    }

private:
    Fault ReadAll() {
        Fault fault = ReadHead();
        while (!fault && !m_isAtEnd) {
            fault = Next() ? ReadLine() : CutShort();
        }
        for (auto study = m_studies.begin(); !fault && study != m_studies.end(); ++study) {
            fault = study->Check();
        }
        return fault;
    }

    static Fault CutShort() { return ParameterFault{"IDS_TERMINAL-PARAMETERS_CUT", {Shown(kEnd)}}; }

    /// Goes to the next line that has a cell with something in it.
    bool Next() {
        m_cells.clear();
        while (m_cells.empty() && m_csv.Next()) {
            std::ranges::transform(m_csv.Fields(), std::back_inserter(m_cells), text::Trim);
            while (!m_cells.empty() && m_cells.back().empty()) {
                m_cells.pop_back();
            }
        }
        return !m_cells.empty();
    }

    Fault ReadHead() {
        if (!Next() || m_cells[0] != kTitle) {
            return ParameterFault{"IDS_TERMINAL-PARAMETERS_NOT_A_FILE", {Shown(kTitle)}};
        }
        if (m_cells.size() != 2 || m_cells[1] != kVersion) {
            const std::string_view version = m_cells.size() > 1 ? m_cells[1] : std::string_view();
            return ParameterFault{"IDS_TERMINAL-PARAMETERS_VERSION",
                                  {Shown(version), Shown(kVersion)}};
        }
        if (!Next()) {
            return CutShort();
        }
        if (!std::ranges::equal(m_cells, kHeadings)) {
            QStringList headings;
            std::ranges::transform(kHeadings, std::back_inserter(headings), Shown);
            return ParameterFault{"IDS_TERMINAL-QUOTES_HEADING_WRONG", {headings.join(',')}};
        }
        return std::nullopt;
    }

    Fault ReadLine() {
        if (m_csv.QuoteOpen()) {
            return ParameterFault{"IDS_TERMINAL-QUOTES_QUOTE_OPEN"};
        }
        if (m_csv.TextAfterQuote()) {
            return ParameterFault{"IDS_TERMINAL-PARAMETERS_AFTER_QUOTE"};
        }
        if (m_cells.size() == 1 && m_cells[0] == kEnd) {
            m_isAtEnd = true;
            return ReadEnd();
        }
        ParameterCells cells;
        if (m_cells.size() > cells.size()) {
            return ParameterFault{"IDS_TERMINAL-PARAMETERS_SURPLUS", {Shown(m_cells.back())}};
        }
        std::ranges::copy(m_cells, cells.begin());
        StudyLines* study = LinesOf(WithoutGuard(cells[kStudy]));
        return study != nullptr ? study->Take(cells, m_csv.Line())
                                : ParameterFault{"IDS_TERMINAL-PARAMETERS_UNKNOWN_STUDY",
                                                 {Shown(cells[kStudy])}};
    }

    Fault ReadEnd() {
        if (m_studies.empty()) {
            return ParameterFault{"IDS_TERMINAL-PARAMETERS_EMPTY"};
        }
        return Next() ? ParameterFault{"IDS_TERMINAL-PARAMETERS_AFTER_END", {Shown(kEnd)}}
                      : Fault();
    }

    /// Of the study of the name, begun with this line when it is the first one; null for an unknown
    /// study.
    StudyLines* LinesOf(std::string_view name) {
        const StudyDefinition* study = FindStudy(name);
        if (study == nullptr) {
            return nullptr;
        }
        const auto begun = std::ranges::find_if(
            m_studies, [study](const StudyLines& lines) { return &lines.Study() == study; });
        return begun != m_studies.end() ? &*begun : &m_studies.emplace_back(*study, m_csv.Line());
    }

    CsvReader m_csv;
    std::vector<std::string_view> m_cells;  ///< of the line, trimmed, without empty ones at its end
    std::vector<StudyLines> m_studies;
    bool m_isAtEnd = false;
};

}  // namespace

ParameterFile ReadParameters(std::string_view bytes) {
    if (const Fault fault = EncodingFault(bytes)) {
        return {{}, fault};
    }
    if (bytes.starts_with(kMark)) {
        bytes.remove_prefix(kMark.size());
    }
    return Reader(bytes).Read();
}

}  // namespace ta::terminal
