#pragma once

#include "terminal/plot/PlotModel.h"
#include "terminal/plot/PlotSlice.h"
#include "terminal/plot/ValueSpan.h"

#include <memory>

class QCPAxis;

namespace ta::terminal {

struct PlotTheme;

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
