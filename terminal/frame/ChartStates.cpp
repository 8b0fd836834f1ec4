#include "terminal/frame/ChartStates.h"

#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "terminal/chart/ChartView.h"
#include "terminal/compare/ComparisonView.h"
#include "terminal/frame/Periods.h"
#include "terminal/plot/ChartAxesText.h"

namespace ta::terminal {
namespace {

void ShowChart(ChartView& chart, const ChartState& state) {
    chart.SetGroup(Repository().GetGroupNameByUniNum(state.group));
    chart.SetDepths(state.depths);
    chart.Show({state.market, ui::FromQString(state.symbol), state.period, state.count});
}

void ShowComparison(ComparisonView& comparison, const ChartState& state) {
    comparison.SetMode(state.comparison->mode);
    comparison.SetDepths(state.depths);
    comparison.Compare(state.comparison->set);
}

}  // namespace

ChartPage* NewChart(const ChartState& state, MarketData& markets) {
    if (state.comparison) {
        return new ComparisonView(markets);
    }
    return new ChartView(markets);
}

void ShowState(ChartPage& chart, const ChartState& state) {
    if (state.comparison) {
        ShowComparison(static_cast<ComparisonView&>(chart), state);
    } else {
        ShowChart(static_cast<ChartView&>(chart), state);
    }
    TakeAxesText(chart.Axes(), state.axes);
    chart.TakeAxes();
}

ChartState StateOf(const ChartPage& page) {
    if (const auto* comparison = qobject_cast<const ComparisonView*>(&page)) {
        ChartState state;
        state.comparison = {comparison->Set(), comparison->Mode()};
        state.depths = comparison->Depths();
        state.axes = AxesText(comparison->Axes());
        return state;
    }
    const auto& chart = static_cast<const ChartView&>(page);
    return {chart.Market(),
            ui::ToQString(chart.SymbolId()),
            chart.Period(),
            chart.Count(),
            chart.GroupUniNum(),
            chart.Depths(),
            {},
            AxesText(chart.Axes())};
}

QString TitleOf(const ChartPage& chart) {
    return chart.Name() + ' ' + PeriodText(chart.Period(), chart.Count());
}

}  // namespace ta::terminal
