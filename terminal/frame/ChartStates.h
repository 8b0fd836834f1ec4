#pragma once

#include "terminal/frame/FrameState.h"

#include <QString>

namespace ta::terminal {

class ChartPage;
class MarketData;

/// A chart window of the kind that the state is of, which shows nothing yet. The caller's.
ChartPage* NewChart(const ChartState& state, MarketData& markets);
/// Shows what the state says in a chart that NewChart() made for it. A group that is not there
/// leaves it on the default one.
void ShowState(ChartPage& chart, const ChartState& state);
/// What a chart shows.
ChartState StateOf(const ChartPage& chart);
/// Its name and its data period, in the language in use.
QString TitleOf(const ChartPage& chart);

}  // namespace ta::terminal
