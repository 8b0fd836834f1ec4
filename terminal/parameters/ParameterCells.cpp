#include "terminal/parameters/ParameterCells.h"

#include "terminal/lang/Language.h"
#include "terminal/studies/StudyDefinition.h"
#include "terminal/studies/StudyStrings.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace ta::terminal {
namespace {

using namespace parameterfile;

/// A whole number in digits alone; -1 for anything else.
int ReadInteger(std::string_view cell, int base = 10) {
    int number = 0;
    const char* const end = cell.data() + cell.size();
    const auto [stop, error] = std::from_chars(cell.data(), end, number, base);
    const bool isNumber = error == std::errc() && stop == end && !cell.starts_with('-');
    return isNumber ? number : -1;
}

int ReadColour(std::string_view cell) {
    constexpr std::size_t kLength = 7;
    return cell.size() == kLength && cell.front() == '#' ? ReadInteger(cell.substr(1), 16) : -1;
}

/// The place of a word among the words; -1 when it is not there.
template <class Words>
int PlaceOf(std::string_view cell, const Words& words) {
    const auto found = std::ranges::find(words, cell);
    return found == words.end() ? -1 : static_cast<int>(found - words.begin());
}

template <class Words>
QString Listed(const Words& words) {
    QStringList list;
    std::ranges::transform(words, std::back_inserter(list), Shown);
    return list.join(Tr("IDS_TERMINAL-PARAMETERS_COMMA"));
}

QString Plain(double value) {
    return QString::fromStdString(FormatNumber(value));
}

/// The first one of some cells that should be empty and is not.
std::optional<ParameterFault> SurplusIn(const ParameterCells& cells, Column first, Column last) {
    for (std::size_t column = first; column <= last; ++column) {
        if (!cells[column].empty()) {
            return ParameterFault{"IDS_TERMINAL-PARAMETERS_SURPLUS", {Shown(cells[column])}};
        }
    }
    return std::nullopt;
}

}  // namespace

std::string_view WithoutGuard(std::string_view cell) {
    const bool isGuarded = cell.starts_with('\'') && LooksLikeFormula(cell.substr(1));
    return isGuarded ? cell.substr(1) : cell;
}

std::optional<ParameterFault> ReadValue(const ParameterCells& cells, const StudyParamInfo& param,
                                        double& value) {
    if (auto surplus = SurplusIn(cells, kColour, kVisible)) {  // as a decimal comma makes one
        return surplus;
    }
    const QString shown = Shown(cells[kValue]);
    value = ParseNumber(cells[kValue]);
    if (std::isnan(value)) {
        return ParameterFault{"IDS_TERMINAL-PARAMETERS_NUMBER", {shown}};
    }
    if (value < param.minimum || value > param.maximum) {
        return ParameterFault{"IDS_TERMINAL-PARAMETERS_RANGE",
                              {shown, Plain(param.minimum), Plain(param.maximum)}};
    }
    if (RoundedParam(param, value) != value) {
        return ParameterFault{"IDS_TERMINAL-PARAMETERS_DECIMALS",
                              {shown, QString::number(param.decimals)}};
    }
    return std::nullopt;
}

std::optional<ParameterFault> ReadLooks(const ParameterCells& cells, StudyShape& shape) {
    constexpr std::array kVisibility{kNo, kYes};
    const int colour = ReadColour(cells[kColour]);
    const int visible = PlaceOf(cells[kVisible], kVisibility);
    shape = {static_cast<std::uint32_t>(std::max(colour, 0)), ReadInteger(cells[kWidth]),
             PlaceOf(cells[kStyle], kStyles), visible == 1};
    if (colour < 0) {
        return ParameterFault{"IDS_TERMINAL-PARAMETERS_COLOUR", {Shown(cells[kColour])}};
    }
    if (shape.style < 0) {
        return ParameterFault{"IDS_TERMINAL-PARAMETERS_STYLE",
                              {Shown(cells[kStyle]), Listed(kStyles)}};
    }
    if (visible < 0) {
        return ParameterFault{"IDS_TERMINAL-PARAMETERS_VISIBLE", {Shown(cells[kVisible])}};
    }
    if (!IsUsableShape(shape)) {
        return ParameterFault{"IDS_TERMINAL-PARAMETERS_WIDTH", {Shown(cells[kWidth])}};
    }
    return SurplusIn(cells, kValue, kValue);
}

}  // namespace ta::terminal
