#include "terminal/chart/ChartView.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/Session.h"
#include "terminal/frame/openers/Openers.h"
#include "terminal/frame/openers/TrendLineListDialog.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/plot/PlotMapping.h"

#include <algorithm>

namespace ta::terminal {
namespace {

bool Shows(const ChartTabs& tabs, const BarsKey& chart) {
    const ChartView* current = tabs.CurrentChart();
    return current != nullptr && current->Shown() == chart;
}

/// Scrolls to the selected line's last point.
void ScrollToLine(ChartView& chart) {
    const TrendLine* line = chart.Drawings().SelectedLine();
    const auto [first, last] = chart.VisibleBars();
    if (line == nullptr || first < 0) {
        return;
    }
    const double bar = chart.Mapping().BarOfTime(line->anchors.back().time);
    if (bar < first || bar > last) {
        chart.SetCursorBar(static_cast<int>(std::clamp(bar, 0.0, chart.BarCount() - 1.0)));
    }
}

/// The chart that the line is on, with the line selected and in view.
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
        ChartView& shown = *frame.tabs.CurrentChart();
        shown.Drawings().Select(line.data);
        ScrollToLine(shown);
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
