#pragma once

#include "terminal/chart/ChartTable.h"

namespace ta::terminal {

class ComparisonModel;

/// The numbers of a comparison: one column a symbol, with what the chart shows of it; a row for
/// each time that any symbol has a bar at, NaN where one has none.
ChartTable ComparisonTable(const ComparisonModel& model);

}  // namespace ta::terminal
