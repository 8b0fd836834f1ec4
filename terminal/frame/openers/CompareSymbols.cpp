#include "dialogs/MXChangeSymbols.h"
#include "terminal/chart/ChartView.h"
#include "terminal/compare/ComparisonModel.h"
#include "terminal/compare/ComparisonView.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/openers/Openers.h"

#include <QMainWindow>

#include <cmath>

namespace ta::terminal {
namespace {

/// A comparison that has the chart's symbol alone, and as much history.
ComparisonSet SetOf(const ChartView& chart) {
    constexpr int kMinutes = 3;
    const HistoryDepth depth = chart.Depth();
    ComparisonSet set;
    if (!chart.SymbolId().empty()) {
        set.symbols = {{chart.Market(), chart.SymbolId()}};
    }
    set.history.dataType = std::min(chart.Period(), kMinutes);
    set.history.minutes = chart.Period() == kMinutes ? chart.Count() : 1;
    set.history.readMode = depth.readMode;
    set.history.recordCount = static_cast<std::int32_t>(depth.recordCount);
    set.history.startDate = static_cast<std::int32_t>(depth.startDay);
    return set;
}

ComparisonSet SetInFront(const ChartTabs& tabs) {
    const ComparisonView* comparison = tabs.CurrentComparison();
    return comparison ? comparison->Set() : SetOf(*tabs.CurrentChart());
}

/// The base date's day, without one the first day of the data; 0 when there are none.
double OfferedDay(const ComparisonSet& set, const BarSeries& bars) {
    if (set.baseDate != 0 || bars.empty()) {
        return std::floor(set.baseDate);
    }
    return std::floor(bars.front().time);
}

/// What the dialog shows. It makes a day of a moment, which stays when its day does.
double ChosenBase(const MXChangeSymbols& dialog, const ComparisonSet& before) {
    if (!dialog.HasBaseDate()) {
        return 0;
    }
    const double day = dialog.GetBaseDate();
    return day == std::floor(before.baseDate) ? before.baseDate : day;
}

}  // namespace

void CompareSymbols(const Frame& frame) {
    constexpr unsigned kDateAlone = 2;
    const ComparisonSet before = SetInFront(frame.tabs);
    const double offered = OfferedDay(before, frame.tabs.Current().Model().Bars());
    MXChangeSymbols dialog(before.symbols, kMostCompared, before.history, kDateAlone, offered,
                           &frame.window);
    if (dialog.DoModal() == ui::kIdOk) {
        frame.tabs.Compare(
            {dialog.GetSymbols(), dialog.GetHisDataType(), ChosenBase(dialog, before)});
    }
    frame.tabs.Current().setFocus();
}

}  // namespace ta::terminal
