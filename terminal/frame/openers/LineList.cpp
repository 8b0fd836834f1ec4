#include "terminal/chart/ChartView.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/Periods.h"
#include "terminal/frame/Session.h"
#include "terminal/frame/openers/Openers.h"
#include "terminal/frame/openers/TrendLineListDialog.h"

#include <QMainWindow>

#include <algorithm>

namespace ta::terminal {
namespace {

/// A period with lines to see, unless they are there already.
void ShowPeriodWithLines(const Frame& frame, const TrendLineSymbol& symbol) {
    const auto& periods = symbol.periods;
    const ChartPage& chart = frame.tabs.Current();
    if (std::ranges::find(periods, std::pair(chart.Period(), chart.Count())) != periods.end()) {
        return;
    }
    const PeriodSet available =
        AvailablePeriods(frame.session.Markets(), symbol.market, symbol.symbol);
    for (const auto& [code, count] : periods) {
        const int index = PeriodIndex(code, count);
        if (index >= 0 && available[static_cast<std::size_t>(index)]) {
            return frame.tabs.SelectPeriod(index);
        }
    }
}

}  // namespace

void ListLines(const Frame& frame) {
    TrendLineListDialog list(frame.session.Markets(), &frame.window);
    const auto chosen = list.exec() == QDialog::Accepted ? list.Chosen() : std::nullopt;
    if (chosen) {
        frame.tabs.OpenSymbol(chosen->market, chosen->symbol);
        ShowPeriodWithLines(frame, *chosen);
    }
}

}  // namespace ta::terminal
