#pragma once

#include "terminal/plot/PlotModel.h"
#include "terminal/plot/PlotSlice.h"

#include <limits>
#include <memory>

class QCPAxis;

namespace ta::terminal {

struct PlotTheme;

/// The values that a scale has to show.
struct ValueSpan {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    bool IsEmpty() const { return !(low <= high); }
    /// A NaN changes nothing.
    void Add(double value) {
        low = value < low ? value : low;
        high = value > high ? value : high;
    }
};

/// One output of a study on the plot. Owns its plottables there.
class PlotSeries {
public:
    virtual ~PlotSeries() = default;

    /// Gives the plot the slice of the data, and `span` the values that are in it. `values` has one
    /// value for each bar.
    virtual void Fill(const BarSeries& bars, const std::vector<double>& values,
                      const PlotSlice& slice, ValueSpan& span) = 0;

    /// Draws on these axes, which outlive it.
    static std::unique_ptr<PlotSeries> Make(const ChartOutput& output, QCPAxis& keyAxis,
                                            QCPAxis& valueAxis, const PlotTheme& theme);
};

}  // namespace ta::terminal
