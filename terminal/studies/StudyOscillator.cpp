#include "terminal/studies/StudyCalculations.h"
#include "terminal/studies/StudyFormulas.h"

#include <functional>

namespace ta::terminal::calculation {
namespace {

using namespace formula;

/// Where each value stands in the range from `lows` (0) to `highs` (100).
Series Positions(const Series& values, const Series& lows, const Series& highs) {
    Series positions(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        positions[i] = PercentPosition(values[i], lows[i], highs[i]);
    }
    return positions;
}

/// Where each close stands in the range of the last `period` bars.
Series ClosePositions(const BarSeries& bars, int period) {
    return Positions(Column(bars, &Bar::close), Lowest(Column(bars, &Bar::low), period),
                     Highest(Column(bars, &Bar::high), period));
}

}  // namespace

StudyOutputs Macd(const BarSeries& bars, const std::vector<double>& params) {
    const Series closes = Column(bars, &Bar::close);
    const Series dif = Combine(Ema(closes, static_cast<int>(params[0])),
                               Ema(closes, static_cast<int>(params[1])), std::minus<>());
    const Series signal = Ema(dif, static_cast<int>(params[2]));
    return {dif, signal, Combine(dif, signal, std::minus<>())};
}

StudyOutputs Stochastic(const BarSeries& bars, const std::vector<double>& params) {
    constexpr double kStart = 50;
    const Series k = AverageFrom(ClosePositions(bars, static_cast<int>(params[0])),
                                 static_cast<int>(params[1]), kStart);
    return {k, AverageFrom(k, static_cast<int>(params[2]), kStart)};
}

StudyOutputs RelativeStrengthIndex(const BarSeries& bars, const std::vector<double>& params) {
    const Series closes = Column(bars, &Bar::close);
    StudyOutputs outputs;
    for (const double period : params) {
        outputs.push_back(RelativeStrength(closes, static_cast<int>(period)));
    }
    return outputs;
}

StudyOutputs WilliamsRange(const BarSeries& bars, const std::vector<double>& params) {
    Series range = ClosePositions(bars, static_cast<int>(params[0]));
    for (double& value : range) {
        value -= 100;
    }
    return {range};
}

StudyOutputs CommodityChannel(const BarSeries& bars, const std::vector<double>& params) {
    const int period = static_cast<int>(params[0]);
    const Series prices = TypicalPrices(bars);
    const Series distance = Combine(prices, Sma(prices, period), std::minus<>());
    return {Combine(distance, MeanDeviation(prices, period), [](double away, double deviation) {
        return Ratio(away, 0.015 * deviation, 0);
    })};
}

StudyOutputs Bias(const BarSeries& bars, const std::vector<double>& params) {
    const Series closes = Column(bars, &Bar::close);
    StudyOutputs outputs;
    for (const double period : params) {
        outputs.push_back(
            Combine(closes, Sma(closes, static_cast<int>(period)),
                    [](double close, double mean) { return 100 * Ratio(close - mean, mean, 0); }));
    }
    return outputs;
}

StudyOutputs PsychologicalLine(const BarSeries& bars, const std::vector<double>& params) {
    const SplitSeries days = SplitByChange(Column(bars, &Bar::close), Series(bars.size(), 100.0));
    StudyOutputs outputs;
    for (const double period : params) {
        outputs.push_back(Sma(days.rising, static_cast<int>(period)));
    }
    return outputs;
}

StudyOutputs Momentum(const BarSeries& bars, const std::vector<double>& params) {
    const Series momentum = Change(Column(bars, &Bar::close), static_cast<int>(params[0]));
    return {momentum, Sma(momentum, static_cast<int>(params[1]))};
}

StudyOutputs RateOfChange(const BarSeries& bars, const std::vector<double>& params) {
    const Series closes = Column(bars, &Bar::close);
    const Series rate =
        Combine(closes, Shifted(closes, static_cast<int>(params[0])),
                [](double close, double before) { return 100 * Ratio(close - before, before, 0); });
    return {rate, Sma(rate, static_cast<int>(params[1]))};
}

StudyOutputs StochasticRsi(const BarSeries& bars, const std::vector<double>& params) {
    const Series rsi = RelativeStrength(Column(bars, &Bar::close), static_cast<int>(params[0]));
    const int window = static_cast<int>(params[1]);
    const Series position = Positions(rsi, Lowest(rsi, window), Highest(rsi, window));
    const Series k = Sma(position, static_cast<int>(params[2]));
    return {k, Sma(k, static_cast<int>(params[3]))};
}

}  // namespace ta::terminal::calculation
