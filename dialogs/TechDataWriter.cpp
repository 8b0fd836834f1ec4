#include "dialogs/TechDataWriter.h"

#include "platform/NumberText.h"
#include "platform/Text.h"
#include "platform/TextBytes.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace ta::techdata {
namespace {

constexpr std::size_t kPieceSize = std::size_t{256} << 10U;
constexpr std::string_view kLineEnd = "\r\n";
constexpr long kSecondsOfDay = 86400;

CString TimeHeading() {
    return BKQuoteInterface::GetBKInterface().LangGetLangString("IDS_TADIALOGS-TECHDATA_TIME");
}

/// What starts a formula, in the wide forms of East Asian input too.
bool StartsFormula(std::string_view text) {
    constexpr std::u16string_view kStarts = u"=+-@\t\r＝＋－＠";
    const std::u16string wide = text::ToUtf16(text.substr(0, 2));
    return !wide.empty() && kStarts.find(wide.front()) != std::u16string_view::npos;
}

void AppendIsoTime(CString& out, double time, bool withTimeOfDay) {
    DayAndSecond parts;
    if (!SplitTime(time, parts)) {
        return;
    }
    if (!withTimeOfDay) {
        AppendDay(out, parts.day, '-');
        return;
    }
    AppendDay(out, parts.day + parts.second / kSecondsOfDay, '-');
    const long second = parts.second % kSecondsOfDay;
    const std::pair<char, long> fields[] = {
        {'T', second / 3600}, {':', second / 60 % 60}, {':', second % 60}};
    for (const auto& [mark, number] : fields) {
        out += mark;
        AppendPadded(out, number, 2);
    }
}

}  // namespace

TextForm ClipboardForm() {
    TextForm form;
    form.separator = '\t';
    form.title = true;
    form.separatorAtEnd = true;
    form.careful = false;
    return form;
}

TextForm CsvForm() {
    TextForm form = ClipboardForm();
    form.separator = ',';
    return form;
}

TextForm RowsForm(bool headings) {
    TextForm form;
    form.separator = '\t';
    form.headings = headings;
    return form;
}

TextForm FormOf(const ExportProfile& profile) {
    if (profile.form == ExportForm::Fixed) {
        return CsvForm();
    }
    TextForm form;
    if (profile.form == ExportForm::Analysis) {
        form.dates = TextForm::Dates::Iso;
        form.numbers = TextForm::Numbers::Shortest;
        form.encoding = TextForm::Encoding::Utf8;
        return form;
    }
    form.dates = TextForm::Dates::Apart;
    form.decimals = profile.decimals;
    form.numbers = profile.decimals < 0 ? TextForm::Numbers::AsShown : TextForm::Numbers::Decimals;
    form.encoding = profile.form == ExportForm::CodePage ? TextForm::Encoding::CodePage
                                                         : TextForm::Encoding::Utf8WithMark;
    form.codePage = profile.codePage == 0 ? text::CodePage() : profile.codePage;
    return form;
}

std::vector<std::size_t> AllColumns(const Headers& headers) {
    std::vector<std::size_t> columns(headers.size());
    std::iota(columns.begin(), columns.end(), std::size_t{0});
    return columns;
}

CString ColumnKey(const Headers& headers, std::size_t column) {
    const CString& name = headers[column].name;
    const auto end = headers.begin() + static_cast<std::ptrdiff_t>(column);
    const auto before = std::ranges::count(headers.begin(), end, name, &HeaderInfo::name);
    return before == 0 ? name : name + '\n' + std::to_string(before + 1);
}

std::vector<std::size_t> ColumnsOf(const ExportProfile& profile, const Headers& headers) {
    std::vector<std::size_t> columns = AllColumns(headers);
    if (profile.form != ExportForm::Fixed && !profile.columns.empty()) {
        std::erase_if(columns, [&](std::size_t column) {
            return std::ranges::find(profile.columns, ColumnKey(headers, column)) ==
                   profile.columns.end();
        });
    }
    return columns.empty() ? AllColumns(headers) : columns;
}

std::u16string LostCharacters(const TextForm& form, const Headers& headers,
                              const std::vector<std::size_t>& columns, bool hasTimeOfDay) {
    std::u16string lost;
    if (form.encoding != TextForm::Encoding::CodePage) {
        return lost;
    }
    CString names;
    for (const std::size_t column : columns) {
        names += headers[column].name + '\n';
        names += column == 0 && hasTimeOfDay ? TimeHeading() : CString();
    }
    text::FromUtf16(text::ToUtf16(names), form.codePage, &lost);
    return lost;
}

TableWriter::TableWriter(const TechDataTable& table, const CellTexts& cells, const TextForm& form,
                         const CString& title, std::vector<std::size_t> columns,
                         std::vector<RowRange> rows)
    : m_table(table),
      m_cells(cells),
      m_form(form),
      m_title(title),
      m_columns(std::move(columns)),
      m_rows(std::move(rows)) {}

std::size_t TableWriter::RowsInAll() const {
    return std::accumulate(
        m_rows.begin(), m_rows.end(), std::size_t{0},
        [](std::size_t sum, const RowRange& range) { return sum + range.last - range.first; });
}

bool TableWriter::Next(std::string& piece) {
    piece.clear();
    const bool first = !std::exchange(m_headDone, true);
    if (first) {
        AppendHead(piece);
    }
    while (m_range < m_rows.size() && piece.size() < kPieceSize) {
        const RowRange& range = m_rows[m_range];
        if (range.first + m_inRange >= range.last) {
            ++m_range;
            m_inRange = 0;
            continue;
        }
        AppendRow(piece, range.first + m_inRange);
        ++m_inRange;
        ++m_done;
    }
    Encode(piece);
    if (first && m_form.encoding == TextForm::Encoding::Utf8WithMark) {
        piece.insert(0, text::kUtf8Mark);
    }
    return !piece.empty();
}

void TableWriter::AppendHead(CString& out) {
    if (m_form.title) {
        out += m_title;
        out += kLineEnd;
    }
    if (m_form.headings) {
        for (const std::size_t column : m_columns) {
            AppendHeading(out, column);
        }
        EndLine(out);
    }
}

void TableWriter::AppendHeading(CString& out, std::size_t column) {
    const Headers& headers = m_table.GetHeaders();
    const CString name = column < headers.size() ? headers[column].name : CString();
    if (!m_form.careful) {
        out += name;
        EndCell(out);
        return;
    }
    AppendCareful(out, StartsFormula(name) ? "'" + name : name);
    EndCell(out);
    if (column == 0 && m_form.dates == TextForm::Dates::Apart && m_cells.HasTimeOfDay()) {
        AppendCareful(out, TimeHeading());
        EndCell(out);
    }
}

void TableWriter::AppendRow(CString& out, std::size_t row) {
    const OneRecord* const record = m_table.Record(row);
    for (const std::size_t column : m_columns) {
        if (column == 0) {
            AppendDates(out, record);
        } else {
            m_cell.clear();
            if (m_form.numbers == TextForm::Numbers::AsShown) {
                m_cells.AppendCell(m_cell, record, m_table.GetHeaders(), column);
            } else if (record != nullptr) {
                AppendValueOf(m_cell, *record, column);
            }
            AppendCareful(out, m_cell);
        }
        EndCell(out);
    }
    EndLine(out);
}

void TableWriter::AppendDates(CString& out, const OneRecord* record) {
    const bool apart = m_form.dates == TextForm::Dates::Apart && m_cells.HasTimeOfDay();
    DayAndSecond parts;
    if (record == nullptr || !SplitTime(record->time, parts)) {
        if (apart) {
            EndCell(out);
        }
    } else if (apart) {
        AppendDay(out, parts.day);
        EndCell(out);
        AppendTimeOfDay(out, parts.second);
    } else if (m_form.dates == TextForm::Dates::Iso) {
        AppendIsoTime(out, record->time, m_cells.HasTimeOfDay());
    } else {
        m_cells.AppendDate(out, record->time);
    }
}

void TableWriter::AppendValueOf(CString& out, const OneRecord& record, std::size_t column) {
    const bool isThere = column < m_table.GetHeaders().size() && Fits(record, m_table.GetHeaders());
    const double value = isThere ? record.values[column - 1] : NAN;
    if (!std::isfinite(value)) {
        return;
    }
    if (m_form.numbers == TextForm::Numbers::Shortest) {
        AppendShortest(out, value);
    } else {
        AppendFixed(out, value, m_form.decimals);
    }
}

void TableWriter::AppendCareful(CString& out, std::string_view cell) const {
    const auto needsQuotes = [this](char byte) {
        return byte == m_form.separator || byte == '"' || byte == '\r' || byte == '\n';
    };
    if (!m_form.careful || std::ranges::none_of(cell, needsQuotes)) {
        out += cell;
        return;
    }
    out += '"';
    for (const char byte : cell) {
        out.append(byte == '"' ? 2U : 1U, byte);
    }
    out += '"';
}

void TableWriter::EndLine(CString& out) const {
    if (!m_form.separatorAtEnd && !m_columns.empty()) {
        out.pop_back();
    }
    out += kLineEnd;
}

void TableWriter::Encode(std::string& piece) const {
    if (m_form.encoding == TextForm::Encoding::UserCodePage || text::IsAscii(piece)) {
        return;
    }
    if (m_form.encoding == TextForm::Encoding::CodePage) {
        piece = text::FromUtf16(text::ToUtf16(piece), m_form.codePage, nullptr);
    } else {
        piece = text::ToUtf8(piece);
    }
}

}  // namespace ta::techdata
