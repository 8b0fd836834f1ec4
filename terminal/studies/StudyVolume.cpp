#include "terminal/studies/StudyCalculations.h"
#include "terminal/studies/StudyFormulas.h"

#include <functional>
#include <limits>

namespace ta::terminal::calculation {
namespace {

using namespace formula;

/// (C - L) - (H - C) in parts of the bar's range: where it closed, from -1 (low) to 1 (high).
double ClosePlace(const Bar& bar) {
    return Ratio((bar.close - bar.low) - (bar.high - bar.close), bar.high - bar.low, 0);
}

}  // namespace

StudyOutputs Volume(const BarSeries& bars, const std::vector<double>& params) {
    const Series volumes = Column(bars, &Bar::volume);
    StudyOutputs outputs{volumes};
    for (const double period : params) {
        outputs.push_back(Sma(volumes, static_cast<int>(period)));
    }
    return outputs;
}

StudyOutputs OnBalanceVolume(const BarSeries& bars, const std::vector<double>& params) {
    const Series volumes = Column(bars, &Bar::volume);
    const SplitSeries split = SplitByChange(Column(bars, &Bar::close), volumes);
    Series balance(bars.size(), 0);
    for (std::size_t i = 1; i < bars.size(); ++i) {
        balance[i] = balance[i - 1] + split.rising[i] - split.falling[i];
    }
    return {balance, Sma(balance, static_cast<int>(params[0]))};
}

StudyOutputs VolumeRatio(const BarSeries& bars, const std::vector<double>& params) {
    const int period = static_cast<int>(params[0]);
    const SplitSeries split = SplitByChange(Column(bars, &Bar::close), Column(bars, &Bar::volume));
    const auto half = [](double volume, double unchanged) { return volume + unchanged / 2; };
    const Series unchanged = Sum(split.unchanged, period);
    return {Combine(Combine(Sum(split.rising, period), unchanged, half),
                    Combine(Sum(split.falling, period), unchanged, half),
                    [](double rising, double falling) {
                        constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
                        return 100 * Ratio(rising, falling, rising == 0 ? 1 : kNone);
                    })};
}

StudyOutputs MoneyFlowIndex(const BarSeries& bars, const std::vector<double>& params) {
    const int period = static_cast<int>(params[0]);
    const Series prices = TypicalPrices(bars);
    const SplitSeries flow =
        SplitByChange(prices, Combine(prices, Column(bars, &Bar::volume), std::multiplies<>()));
    return {Combine(
        Sum(flow.rising, period), Sum(flow.falling, period),
        [](double rising, double falling) { return 100 * Ratio(rising, rising + falling, 0.5); })};
}

StudyOutputs ChaikinMoneyFlow(const BarSeries& bars, const std::vector<double>& params) {
    const int period = static_cast<int>(params[0]);
    Series flow(bars.size());
    for (std::size_t i = 0; i < bars.size(); ++i) {
        flow[i] = ClosePlace(bars[i]) * bars[i].volume;
    }
    return {Combine(Sum(flow, period), Sum(Column(bars, &Bar::volume), period),
                    [](double flows, double volume) { return Ratio(flows, volume, 0); })};
}

}  // namespace ta::terminal::calculation
