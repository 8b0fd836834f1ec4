#pragma once

#include "terminal/plot/LegendEntry.h"

#include <vector>

namespace ta::terminal {

class PlotModel;
struct PlotTheme;

/// The legend of a pane for one bar of one symbol: the symbol over the first pane, then each study
/// with its values.
std::vector<LegendEntry> MakeLegend(const PlotModel& model, int pane, int bar,
                                    const PlotTheme& theme);

/// Date and prices of a bar in one text; empty for an index outside the bars.
QString MakeBarText(const PlotModel& model, int bar);

}  // namespace ta::terminal
