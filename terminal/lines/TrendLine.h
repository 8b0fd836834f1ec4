#pragma once

#include "platform/Study.h"
#include "platform/Types.h"

#include <optional>
#include <vector>

namespace ta::terminal {

/// The kinds of trend lines that the terminal draws, with the numbers that data strings carry.
enum class TrendLineKind {
    Horizontal = 2002,
    Line = 2004,
    RailLine = 2005,
    Parallel = 2006,
    GoldenCut = 2009,
    Segment = 2021,
};

/// What a line is drawn with.
struct LinePen {
    std::uint32_t colour = 0;  ///< 0xRRGGBB
    int width = 1;             ///< pixels, 1 to 5
    int style = 0;             ///< as StudyShape::style

    bool operator==(const LinePen&) const = default;
};

/// What is to be known of a kind before it is drawn.
struct TrendLineKindInfo {
    TrendLineKind kind = TrendLineKind::Line;
    int anchorCount = 2;
    LinePen pen;               ///< of a new line, before the user has chosen one
    const char* hintKey = "";  ///< language key: what the user does to draw it
};

/// In the order in which they are offered.
const std::vector<TrendLineKindInfo>& TrendLineKinds();
/// Null for a number that the terminal does not draw.
const TrendLineKindInfo* FindTrendLineKind(int number);
const TrendLineKindInfo& InfoOf(TrendLineKind kind);

/// A point that a line holds on to.
struct LineAnchor {
    double time = 0;   ///< as Bar::time; may lie beyond the bars
    double price = 0;  ///< on the scale of the pane

    bool operator==(const LineAnchor&) const = default;
};

/// A line that the user drew.
///
/// Anchors by kind: horizontal line, its price (the time is where the handle stands); line and line
/// segment, two points; rail line, two points of the middle line and one of a rail, the other rail
/// lies as far on the other side; parallel, two points of one line and one of the other; golden
/// cut, beginning and end of the move that is cut.
struct TrendLine {
    TrendLineKind kind = TrendLineKind::Line;
    LinePen pen;
    bool locked = false;  ///< neither moved nor deleted until it is unlocked
    std::vector<LineAnchor> anchors;

    bool operator==(const TrendLine&) const = default;
};

/// The largest time and price (to both sides of 0) of a data string.
inline constexpr double kLargestLineTime = 1e7;
inline constexpr double kLargestLinePrice = 1e15;

/// The line as the settings repository keeps it:
///
///     kind/colour/width/style/flag/time,price/time,price ...
///
/// Kind, width and style are decimal numbers, the colour six hexadecimal digits, the flag "1" for a
/// locked line and "0" for another. The anchors follow, as many as the kind has, in the shortest
/// decimal text that gives the same number again.
CString EncodeTrendLine(const TrendLine& line);
/// Nothing for a kind that the terminal does not draw and for a text that is not exactly of the
/// form above: missing or surplus fields, values out of range, blanks. Takes any bytes.
std::optional<TrendLine> DecodeTrendLine(const CString& data);

/// The part of a pen of the form above, "colour/width/style".
CString EncodePen(const LinePen& pen);
std::optional<LinePen> DecodePen(const CString& text);

}  // namespace ta::terminal
