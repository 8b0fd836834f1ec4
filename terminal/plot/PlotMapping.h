#pragma once

#include "platform/Study.h"

#include <memory>
#include <vector>

namespace ta::terminal {

/// The one place that turns bars, times and values into pixels of a chart view and back: a copy of
/// the geometry at one moment. Bars may be fractions, and lie outside the series.
struct PlotMapping {
    struct Pane {
        double top = 0;  ///< pixels
        double height = 0;
        double low = 0;  ///< values of the pane's labelled scale at its lower and upper edge
        double high = 1;

        double Bottom() const { return top + height; }
        double YOf(double value) const;
        double ValueAt(double y) const;
    };

    double left = 0;  ///< pixels
    double width = 1;
    double firstBar = 0;  ///< at the left and right edge
    double lastBar = 1;
    std::vector<Pane> panes;  ///< from the top down
    std::shared_ptr<const BarSeries> bars;

    double PixelsPerBar() const { return width / (lastBar - firstBar); }
    double XOf(double bar) const { return left + (bar - firstBar) * PixelsPerBar(); }
    double BarAt(double x) const { return firstBar + (x - left) / PixelsPerBar(); }
    /// The index of the existing bar nearest to a pixel; -1 without bars.
    int NearestBarAt(double x) const;

    /// The place of a time (days since 1970-01-01, see Bar::time) among the bars: between two bars
    /// by the share of the time between them, beyond the ends by the distance of the bars there.
    /// With fewer than two bars it is 0.
    double BarOfTime(double time) const;
    double TimeOfBar(double bar) const;

    /// The pane at a pixel; between and outside the panes -1.
    int PaneAt(double y) const;
};

}  // namespace ta::terminal
