#pragma once

#include "dialogs/TechData.h"
#include "terminal/plot/PlotNumbers.h"

namespace ta::terminal {

class ChartModel;
class PlotModel;

/// The numbers of a chart window as the data viewer takes them; texts in the user's code page and
/// in the language in use.
struct ChartTable {
    CString caption;  ///< what is shown: symbols and period
    CString group;    ///< the indicator group; empty without one
    techdata::Headers headers;
    techdata::Records records;  ///< one a bar, NaN for a value that is none
};

/// The date, the prices and the volume of the bars, then every output of every study of the group,
/// pane by pane; the candles, which are the prices, are left out.
ChartTable MakeChartTable(const ChartModel& model, const CString& group);

CString TableCaption(const PlotModel& model);
techdata::HeaderInfo DateHeading();
/// A column of values that are written as in the chart's legend, but not shortened.
techdata::HeaderInfo NumberHeading(const QString& name, NumberKind numbers, int priceDecimals);

}  // namespace ta::terminal
