#include "terminal/lines/TrendLineGeometry.h"

#include "platform/Rounding.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ta::terminal {
namespace {

constexpr double kEndless = std::numeric_limits<double>::infinity();
constexpr double kLineTolerance = 5;    // pixels
constexpr double kHandleTolerance = 8;  // pixels

LineAnchor Within(double time, double price) {
    return {std::clamp(time, -kLargestLineTime, kLargestLineTime),
            std::clamp(price, -kLargestLinePrice, kLargestLinePrice)};
}

double Distance(const QLineF& line, const QPointF& point) {
    const QPointF way = line.p2() - line.p1();
    const double length = QPointF::dotProduct(way, way);
    const double share =
        length > 0 ? std::clamp(QPointF::dotProduct(point - line.p1(), way) / length, 0.0, 1.0) : 0;
    return QLineF(line.p1() + share * way, point).length();
}

/// Adds parts of a line to its picture.
struct Pencil {
    TrendLinePicture& picture;
    QRectF area;

    void Draw(std::vector<QLineF>& to, const QPointF& a, const QPointF& b, double least,
              double most) const {
        if (const auto part = ClipLine(a, b, area, least, most)) {
            to.push_back(*part);
        }
    }
    void DrawEndless(const QPointF& a, const QPointF& b) const {
        Draw(picture.lines, a, b, -kEndless, kEndless);
    }
    /// From `left` to the right edge of the pane.
    void DrawLevel(double left, double y, double price, double level) const {
        const double from = std::clamp(left, area.left(), area.right());
        if (left <= area.right() && y >= area.top() && y <= area.bottom()) {
            picture.lines.emplace_back(from, y, area.right(), y);
            picture.labels.push_back({picture.lines.back(), price, level});
        }
    }
};

void DrawGoldenCut(const TrendLine& line, const Pencil& pencil, const DrawingFrame& frame) {
    const QPointF begin = pencil.picture.handles[0];
    const QPointF end = pencil.picture.handles[1];
    const PlotMapping::Pane& pane = frame.mapping.panes[static_cast<std::size_t>(frame.pane)];
    pencil.Draw(pencil.picture.guides, begin, end, 0, 1);
    for (const double level : kGoldenLevels) {
        const double to = line.anchors[1].price;
        const double price = to + level * (line.anchors[0].price - to);
        pencil.DrawLevel(std::min(begin.x(), end.x()), pane.YOf(price), price, level);
    }
}

}  // namespace

bool DrawingFrame::IsDrawable() const {
    return pane >= 0 && mapping.bars && mapping.bars->size() >= 2;
}

QRectF DrawingFrame::Area() const {
    const PlotMapping::Pane& at = mapping.panes[static_cast<std::size_t>(pane)];
    return {mapping.left, at.top, mapping.width, at.height};
}

QPointF DrawingFrame::PointOf(const LineAnchor& anchor) const {
    return {mapping.XOf(mapping.BarOfTime(anchor.time)),
            mapping.panes[static_cast<std::size_t>(pane)].YOf(anchor.price)};
}

double DrawingFrame::PriceAt(double y) const {
    return mapping.panes[static_cast<std::size_t>(pane)].ValueAt(y);
}

LineAnchor DrawingFrame::AnchorAt(const QPointF& point) const {
    return Within(mapping.TimeOfBar(std::round(mapping.BarAt(point.x()))),
                  RoundedTo(PriceAt(point.y()), priceDecimals));
}

LineAnchor DrawingFrame::Moved(const LineAnchor& anchor, double bars, double price) const {
    const double whole = std::round(bars);
    return Within(
        whole == 0 ? anchor.time : mapping.TimeOfBar(mapping.BarOfTime(anchor.time) + whole),
        price == 0 ? anchor.price : RoundedTo(anchor.price + price, priceDecimals));
}

TrendLinePicture MakePicture(const TrendLine& line, const DrawingFrame& frame) {
    TrendLinePicture picture;
    if (!frame.IsDrawable()) {
        return picture;
    }
    const Pencil pencil{picture, frame.Area()};
    for (const LineAnchor& anchor : line.anchors) {
        picture.handles.push_back(frame.PointOf(anchor));
    }
    const std::vector<QPointF>& at = picture.handles;
    const auto through = [&](const QPointF& point) {
        pencil.DrawEndless(point, point + at[1] - at[0]);
    };
    switch (line.kind) {
        case TrendLineKind::Horizontal:
            pencil.DrawLevel(pencil.area.left(), at[0].y(), line.anchors[0].price, -1);
            break;
        case TrendLineKind::Line:
            through(at[0]);
            break;
        case TrendLineKind::Segment:
            pencil.Draw(picture.lines, at[0], at[1], 0, 1);
            break;
        case TrendLineKind::Parallel:
            through(at[0]);
            through(at[2]);
            break;
        case TrendLineKind::RailLine:
            pencil.Draw(picture.guides, at[0], at[1], -kEndless, kEndless);
            through(at[2]);
            through(2 * at[0] - at[2]);
            break;
        case TrendLineKind::GoldenCut:
            DrawGoldenCut(line, pencil, frame);
            break;
    }
    return picture;
}

std::optional<TrendLineHit> HitTest(const TrendLinePicture& picture, const QPointF& point,
                                    bool handles) {
    std::optional<TrendLineHit> best;
    const auto take = [&](int anchor, double distance, double tolerance) {
        if (distance <= tolerance && (!best || distance < best->distance)) {
            best = TrendLineHit{anchor, distance};
        }
    };
    for (std::size_t i = 0; handles && i < picture.handles.size(); ++i) {
        take(static_cast<int>(i), QLineF(picture.handles[i], point).length(), kHandleTolerance);
    }
    if (best) {
        return best;
    }
    for (const std::vector<QLineF>* parts : {&picture.lines, &picture.guides}) {
        for (const QLineF& part : *parts) {
            take(-1, Distance(part, point), kLineTolerance);
        }
    }
    return best;
}

// Liang and Barsky, "A new concept and method for line clipping", 1984: each edge bounds the share
// of the way at which the line is inside.
std::optional<QLineF> ClipLine(const QPointF& from, const QPointF& to, const QRectF& area,
                               double least, double most) {
    const QPointF way = to - from;
    if (!std::isfinite(way.x()) || !std::isfinite(way.y()) || way.isNull()) {
        return std::nullopt;
    }
    const auto bound = [&](double step, double room) {
        if (step == 0) {
            return room >= 0;
        }
        (step < 0 ? least : most) =
            step < 0 ? std::max(least, room / step) : std::min(most, room / step);
        return least <= most;
    };
    if (bound(-way.x(), from.x() - area.left()) && bound(way.x(), area.right() - from.x()) &&
        bound(-way.y(), from.y() - area.top()) && bound(way.y(), area.bottom() - from.y()) &&
        std::isfinite(least) && std::isfinite(most)) {
        return QLineF(from + least * way, from + most * way);
    }
    return std::nullopt;
}

}  // namespace ta::terminal
