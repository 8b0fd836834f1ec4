#include "platform/ui/TextBridge.h"
#include "terminal/chart/ChartView.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/Periods.h"
#include "terminal/frame/Session.h"
#include "terminal/frame/openers/Openers.h"
#include "terminal/frame/openers/TrendLineListDialog.h"
#include "terminal/lang/Language.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/plot/PlotMapping.h"

#include <algorithm>

namespace ta::terminal {
namespace {

bool Shows(const ChartTabs& tabs, const BarsKey& chart) {
    const ChartView* current = tabs.CurrentChart();
    return current != nullptr && current->Shown() == chart;
}

/// Brings the chart to the front where it is open, else opens it in the current one; false, with a
/// notice, when it cannot be shown.
bool OpenChart(const Frame& frame, const BarsKey& chart) {
    ChartTabs& tabs = frame.tabs;
    if (const ChartView* open = tabs.ChartOf(chart); open && tabs.BringToFront(*open)) {
        return true;
    }
    if (!IsThere(frame.session.Markets(), chart)) {
        frame.Notice(Tr("IDS_TERMINAL-FRAME_LINES_NO_CHART")
                         .arg(ui::ToQString(chart.symbol), PeriodText(chart.period, chart.count)));
        return false;
    }
    tabs.OpenSymbol(chart.market, chart.symbol);
    if (!Shows(tabs, chart)) {
        tabs.ShowPeriod(chart.period, chart.count);
    }
    return Shows(tabs, chart);
}

/// Scrolls to the selected line's first point.
void ScrollToLine(ChartView& chart) {
    const TrendLine* line = chart.Drawings().SelectedLine();
    const auto [first, last] = chart.VisibleBars();
    if (line == nullptr || first < 0) {
        return;
    }
    const double bar = chart.Mapping().BarOfTime(line->anchors.front().time);
    if (bar < first || bar > last) {
        chart.SetCursorBar(static_cast<int>(std::clamp(bar, 0.0, chart.BarCount() - 1.0)));
    }
}

/// The chart that the line is on, with the line selected and in view.
void ShowLine(const Frame& frame, const ListedTrendLine& line) {
    if (OpenChart(frame, line.chart)) {
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
