#include "terminal/chart/ChartView.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/Session.h"
#include "terminal/frame/openers/Openers.h"
#include "terminal/frame/openers/TrendLineListDialog.h"
#include "terminal/lines/DrawingBoard.h"

namespace ta::terminal {
namespace {

bool Shows(const ChartTabs& tabs, const BarsKey& chart) {
    const ChartView* current = tabs.CurrentChart();
    return current != nullptr && current->Shown() == chart;
}

/// The chart that the line is on, with the line selected.
void ShowLine(const Frame& frame, const ListedTrendLine& line) {
    const BarsKey& chart = line.chart;
    if (!Shows(frame.tabs, chart)) {
        frame.tabs.OpenSymbol(chart.market, chart.symbol);
    }
    if (!Shows(frame.tabs, chart) &&
        frame.session.Markets().HasPeriod(chart.market, chart.symbol, chart.period)) {
        frame.tabs.ShowPeriod(chart.period, chart.count);
    }
    if (Shows(frame.tabs, chart)) {
        frame.tabs.CurrentChart()->Drawings().Select(line.data);
    }
}

}  // namespace

void ListLines(const Frame& frame) {
    TrendLineListDialog list(frame);
    if (list.exec() == QDialog::Accepted) {
        if (const auto chosen = list.Chosen()) {
            ShowLine(frame, *chosen);
        }
    }
}

}  // namespace ta::terminal
