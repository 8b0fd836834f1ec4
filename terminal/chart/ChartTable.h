#pragma once

#include "dialogs/TechData.h"

namespace ta::terminal {

class ChartModel;

/// The columns of a chart as the data viewer takes them: the date, the prices and the volume of the
/// bars, then every output of every study of the group, pane by pane; the candles, which are the
/// prices, are left out. In the language in use.
techdata::Headers ChartHeaders(const ChartModel& model);

/// One record a bar, NaN where a study has no value.
techdata::Records ChartRecords(const ChartModel& model);

/// What the table shows, in the user's code page: symbol and period.
CString ChartCaption(const ChartModel& model);

}  // namespace ta::terminal
