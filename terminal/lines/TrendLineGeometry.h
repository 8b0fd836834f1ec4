#pragma once

#include "terminal/lines/TrendLine.h"
#include "terminal/plot/PlotMapping.h"

#include <QLineF>
#include <QPointF>
#include <QRectF>

#include <optional>
#include <vector>

namespace ta::terminal {

/// Where lines are drawn: the geometry of the chart and the pane that shows the prices.
struct DrawingFrame {
    PlotMapping mapping;
    int pane = -1;          ///< -1: there is none, and no line is drawn
    int priceDecimals = 2;  ///< of the symbol's price step

    /// Whether lines can be drawn: there is a pane of prices, and bars to tell the time.
    bool IsDrawable() const;
    /// Of the pane, pixels.
    QRectF Area() const;
    QPointF PointOf(const LineAnchor& anchor) const;
    double PriceAt(double y) const;
    /// The anchor for a pixel: the time of the nearest bar (beyond the last bar, of the bars as if
    /// they went on) and the price rounded to the symbol's decimals.
    LineAnchor AnchorAt(const QPointF& point) const;
    /// The anchor moved by whole bars and a price, rounded to the symbol's decimals.
    LineAnchor Moved(const LineAnchor& anchor, double bars, double price) const;
};

/// The levels of a golden cut: parts of the move that are taken back, 0 at its end and 1 at its
/// beginning. 0.618 is the golden ratio's (sqrt(5) - 1) / 2, the others are its square and cube,
/// its square root, and the middle.
inline constexpr double kGoldenLevels[] = {0, 0.236, 0.382, 0.5, 0.618, 0.786, 1};

/// A line as it is painted, in pixels, cut off at the pane's edges. Nothing of a line that is out
/// of view.
struct TrendLinePicture {
    struct Label {
        QLineF line;  ///< that it belongs to, from left to right
        double price = 0;
        double level = -1;  ///< of a golden cut; -1: none
    };

    std::vector<QLineF> lines;
    std::vector<QLineF> guides;  ///< thin, beside the line itself
    std::vector<Label> labels;
    std::vector<QPointF> handles;  ///< one for each anchor, in view or not

    bool IsInView() const { return !lines.empty() || !guides.empty(); }
};

TrendLinePicture MakePicture(const TrendLine& line, const DrawingFrame& frame);

/// What of a line is at a pixel.
struct TrendLineHit {
    int anchor = -1;      ///< -1: the line as a whole
    double distance = 0;  ///< pixels
};

/// Nothing when the line is farther than the mouse's tolerance. `handles`: they are shown and can
/// be hit.
std::optional<TrendLineHit> HitTest(const TrendLinePicture& picture, const QPointF& point,
                                    bool handles);

/// The part of the endless line through `from` and `to` that is in `area`, between the shares
/// `least` and `most` of the way from one to the other. Nothing when it misses the area, or the
/// points are the same or not finite.
std::optional<QLineF> ClipLine(const QPointF& from, const QPointF& to, const QRectF& area,
                               double least, double most);

}  // namespace ta::terminal
