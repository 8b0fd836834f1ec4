#include "terminal/parameters/ParameterWriter.h"

#include "platform/Text.h"
#include "terminal/parameters/ParameterFormat.h"
#include "terminal/studies/StudyCatalogue.h"
#include "terminal/studies/StudyStrings.h"

#include <fmt/format.h>

namespace ta::terminal {
namespace {

using namespace parameterfile;
using Cells = std::array<std::string, kColumnCount>;

/// A cell in quotes where it needs them.
std::string Quoted(const std::string& cell) {
    if (cell.find_first_of(",\"\r\n") == std::string::npos) {
        return cell;
    }
    std::string quoted = "\"";
    for (const char c : cell) {
        quoted.append(c == '"' ? 2 : 1, c);
    }
    return quoted + '"';
}

template <class Texts>
void AppendLine(std::string& out, const Texts& cells) {
    const char* separator = "";
    for (const auto& cell : cells) {
        out += separator + Quoted(std::string(cell));
        separator = ",";
    }
    out += "\r\n";
}

std::string Name(const CString& name) {
    const std::string text = text::ToUtf8(name);
    return LooksLikeFormula(text) ? "'" + text : text;
}

/// The line of a parameter or shape, without its values.
template <class Item>
Cells Begun(const StudyDefinition& study, std::string_view kind, const Item& item) {
    Cells cells;
    cells[kStudy] = Name(study.englishName);
    cells[kStudyChinese] = Name(study.chineseName);
    cells[kKind] = kind;
    cells[kName] = Name(item.englishName);
    cells[kNameChinese] = Name(item.chineseName);
    return cells;
}

void AppendParameter(std::string& out, const StudyDefinition& study, std::size_t index,
                     double value) {
    Cells cells = Begun(study, kParameter, study.params[index]);
    cells[kValue] = FormatNumber(value);
    AppendLine(out, cells);
}

void AppendShape(std::string& out, const StudyDefinition& study, std::size_t index,
                 const StudyShape& shape) {
    Cells cells = Begun(study, kShape, study.shapes[index]);
    cells[kColour] = fmt::format("#{:06X}", shape.colour);
    cells[kWidth] = std::to_string(shape.width);
    cells[kStyle] = kStyles[static_cast<std::size_t>(shape.style)];
    cells[kVisible] = shape.visible ? kYes : kNo;
    AppendLine(out, cells);
}

}  // namespace

std::string WriteParameters(const std::vector<StudySettings>& studies) {
    std::string out(kMark);
    AppendLine(out, std::array{kTitle, kVersion});
    AppendLine(out, kHeadings);
    for (const StudySettings& settings : studies) {
        const StudyDefinition* study = FindStudyDefinition(settings.type);
        if (study == nullptr) {
            continue;
        }
        for (std::size_t i = 0; i < settings.params.size(); ++i) {
            AppendParameter(out, *study, i, settings.params[i]);
        }
        for (std::size_t i = 0; i < settings.shapes.size(); ++i) {
            AppendShape(out, *study, i, settings.shapes[i]);
        }
    }
    AppendLine(out, std::array{kEnd});
    return out;
}

}  // namespace ta::terminal
