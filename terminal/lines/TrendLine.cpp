#include "terminal/lines/TrendLine.h"

#include "platform/Split.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <span>
#include <string_view>

namespace ta::terminal {
namespace {

constexpr std::size_t kAnchorsFrom = 5;  // fields before the first anchor
constexpr std::size_t kPenFields = 3;
constexpr std::size_t kColourDigits = 6;
constexpr int kWidest = 5;
constexpr int kLastStyle = 4;

/// The whole text as one number. `format`: the base of an integer, or a std::chars_format.
template <class Number, class Format>
bool Read(std::string_view text, Number& number, Format format) {
    const char* end = text.data() + text.size();
    const auto [stop, fault] = std::from_chars(text.data(), end, number, format);
    return fault == std::errc() && stop == end;
}

bool ReadWithin(std::string_view text, int least, int most, int& number) {
    return Read(text, number, 10) && number >= least && number <= most;
}

bool ReadWithin(std::string_view text, double largest, double& number) {
    return Read(text, number, std::chars_format::general) && std::abs(number) <= largest;
}

bool ReadAnchor(std::string_view text, LineAnchor& anchor) {
    const std::vector<std::string_view> values = text::Split(text, ',');
    return values.size() == 2 && ReadWithin(values[0], kLargestLineTime, anchor.time) &&
           ReadWithin(values[1], kLargestLinePrice, anchor.price);
}

/// `fields`: three of them.
bool ReadPen(std::span<const std::string_view> fields, LinePen& pen) {
    return fields[0].size() == kColourDigits && Read(fields[0], pen.colour, 16) &&
           ReadWithin(fields[1], 1, kWidest, pen.width) &&
           ReadWithin(fields[2], 0, kLastStyle, pen.style);
}

bool ReadLook(std::span<const std::string_view> fields, TrendLine& line) {
    line.locked = fields[4] == "1";
    return ReadPen(fields.subspan(1, kPenFields), line.pen) && (line.locked || fields[4] == "0");
}

}  // namespace

const std::vector<TrendLineKindInfo>& TrendLineKinds() {
    static const std::vector<TrendLineKindInfo> kinds{
        {TrendLineKind::Line, 2, {0x2a7fff, 2}, "IDS_TERMINAL-CHART_DRAW_TWO_POINTS"},
        {TrendLineKind::Segment, 2, {0x2a7fff, 2}, "IDS_TERMINAL-CHART_DRAW_TWO_POINTS"},
        {TrendLineKind::Horizontal, 1, {0x0097a7, 2}, "IDS_TERMINAL-CHART_DRAW_HORIZONTAL"},
        {TrendLineKind::Parallel, 3, {0x9c4dcc, 2}, "IDS_TERMINAL-CHART_DRAW_PARALLEL"},
        {TrendLineKind::RailLine, 3, {0x9c4dcc, 2}, "IDS_TERMINAL-CHART_DRAW_RAILS"},
        {TrendLineKind::GoldenCut, 2, {0xc77700, 1}, "IDS_TERMINAL-CHART_DRAW_GOLDEN_CUT"},
    };
    return kinds;
}

const TrendLineKindInfo* FindTrendLineKind(int number) {
    const auto found = std::ranges::find(TrendLineKinds(), static_cast<TrendLineKind>(number),
                                         &TrendLineKindInfo::kind);
    return found == TrendLineKinds().end() ? nullptr : &*found;
}

const TrendLineKindInfo& InfoOf(TrendLineKind kind) {
    return *FindTrendLineKind(static_cast<int>(kind));
}

CString EncodeTrendLine(const TrendLine& line) {
    CString data = fmt::format("{}/{}/{}", static_cast<int>(line.kind), EncodePen(line.pen),
                               line.locked ? 1 : 0);
    for (const LineAnchor& anchor : line.anchors) {
        data += fmt::format("/{},{}", anchor.time, anchor.price);
    }
    return data;
}

std::optional<TrendLine> DecodeTrendLine(const CString& data) {
    const std::vector<std::string_view> fields = text::Split(data, '/');
    int number = 0;
    const TrendLineKindInfo* kind =
        Read(fields[0], number, 10) ? FindTrendLineKind(number) : nullptr;
    if (kind == nullptr ||
        fields.size() != kAnchorsFrom + static_cast<std::size_t>(kind->anchorCount)) {
        return std::nullopt;
    }
    TrendLine line;
    line.kind = kind->kind;
    bool readable = ReadLook(fields, line);
    for (std::size_t i = kAnchorsFrom; readable && i < fields.size(); ++i) {
        readable = ReadAnchor(fields[i], line.anchors.emplace_back());
    }
    return readable ? std::optional(std::move(line)) : std::nullopt;
}

CString EncodePen(const LinePen& pen) {
    return fmt::format("{:06x}/{}/{}", pen.colour, pen.width, pen.style);
}

std::optional<LinePen> DecodePen(const CString& text) {
    const std::vector<std::string_view> fields = text::Split(text, '/');
    LinePen pen;
    return fields.size() == kPenFields && ReadPen(fields, pen) ? std::optional(pen) : std::nullopt;
}

}  // namespace ta::terminal
