#pragma once

#include <array>
#include <cstddef>
#include <string_view>

/// The file of study parameters: comma-separated text in UTF-8 with a mark, so that spreadsheets
/// show Chinese, and with a point in numbers. In its lines:
///
///     TA study parameters,1
///     Study,指標,Kind,Name,名稱,Value,Colour,Width,Style,Visible
///     Volume,成交量,parameter,Short period,短期,5,,,,
///     Volume,成交量,shape,Short average,短期均量,,#1C7ED6,1,solid,yes
///     End
///
/// The number is the version. Every study has all its parameters and shapes, a line each. The
/// English names say what a line is about; the Chinese ones are there to be read. Cells that a
/// spreadsheet would take for formulas, as "+DI", have an apostrophe in front.
namespace ta::terminal::parameterfile {

inline constexpr std::string_view kMark = "\xEF\xBB\xBF";
inline constexpr std::string_view kTitle = "TA study parameters";
inline constexpr std::string_view kVersion = "1";
inline constexpr std::string_view kEnd = "End";

enum Column : std::size_t {
    kStudy,
    kStudyChinese,
    kKind,
    kName,
    kNameChinese,
    kValue,
    kColour,
    kWidth,
    kStyle,
    kVisible,
    kColumnCount
};
inline constexpr std::array<std::string_view, kColumnCount> kHeadings{
    "Study", "指標", "Kind", "Name", "名稱", "Value", "Colour", "Width", "Style", "Visible"};

inline constexpr std::string_view kParameter = "parameter";
inline constexpr std::string_view kShape = "shape";
/// By the styles' numbers.
inline constexpr std::array<std::string_view, 5> kStyles{"solid", "dash", "dot", "dash-dot",
                                                         "dash-dot-dot"};
inline constexpr std::string_view kYes = "yes";
inline constexpr std::string_view kNo = "no";

/// Whether a spreadsheet would take a cell of text for a formula.
inline bool LooksLikeFormula(std::string_view cell) {
    return !cell.empty() && std::string_view("=+-@").find(cell.front()) != std::string_view::npos;
}

}  // namespace ta::terminal::parameterfile
