#include "terminal/studies/StudyCalculations.h"
#include "terminal/studies/StudyFormulas.h"

#include <algorithm>
#include <functional>
#include <limits>

namespace ta::terminal::calculation {
namespace {

using namespace formula;

StudyOutputs OfCloses(const BarSeries& bars, const std::vector<double>& periods,
                      Series (*average)(const Series&, int)) {
    const Series closes = Column(bars, &Bar::close);
    StudyOutputs outputs;
    for (const double period : periods) {
        outputs.push_back(average(closes, static_cast<int>(period)));
    }
    return outputs;
}

double Middle(double a, double b) {
    return (a + b) / 2;
}

/// The stop-and-reverse state after a bar.
struct SarTrade {
    bool rising = true;
    double stop = 0;
    double extreme = 0;
    double factor = 0;

    bool IsCrossedBy(const Bar& bar) const { return rising ? bar.low < stop : bar.high > stop; }

    void Reverse(const Bar& bar, double start) {
        stop = rising ? std::max(extreme, bar.high) : std::min(extreme, bar.low);
        rising = !rising;
        extreme = rising ? bar.high : bar.low;
        factor = start;
    }

    void Follow(const Bar& bar, double step, double maximum) {
        if (rising ? bar.high > extreme : bar.low < extreme) {
            extreme = rising ? bar.high : bar.low;
            factor = std::min(factor + step, maximum);
        }
    }
};

SarTrade FirstTrade(const Bar& first, const Bar& second, double start) {
    const double low = std::min(first.low, second.low);
    const double high = std::max(first.high, second.high);
    const bool rising = second.high - first.high >= first.low - second.low;
    return rising ? SarTrade{true, low, high, start} : SarTrade{false, high, low, start};
}

}  // namespace

StudyOutputs Candlesticks(const BarSeries& bars, const std::vector<double>& /*params*/) {
    return {Column(bars, &Bar::close)};
}

StudyOutputs MovingAverages(const BarSeries& bars, const std::vector<double>& params) {
    return OfCloses(bars, params, Sma);
}

StudyOutputs ExponentialAverages(const BarSeries& bars, const std::vector<double>& params) {
    return OfCloses(bars, params, Ema);
}

StudyOutputs WeightedAverages(const BarSeries& bars, const std::vector<double>& params) {
    return OfCloses(bars, params, Wma);
}

StudyOutputs BollingerBands(const BarSeries& bars, const std::vector<double>& params) {
    const Series closes = Column(bars, &Bar::close);
    const int period = static_cast<int>(params[0]);
    const double width = params[1];
    const Series middle = Sma(closes, period);
    const Series deviation = formula::StandardDeviation(closes, period);
    return {Combine(middle, deviation, [width](double m, double d) { return m + width * d; }),
            middle,
            Combine(middle, deviation, [width](double m, double d) { return m - width * d; })};
}

StudyOutputs ParabolicSar(const BarSeries& bars, const std::vector<double>& params) {
    Series stops(bars.size(), std::numeric_limits<double>::quiet_NaN());
    if (bars.size() < 2) {
        return {stops};
    }
    SarTrade trade = FirstTrade(bars[0], bars[1], params[0]);
    stops[1] = trade.stop;
    for (std::size_t i = 2; i < bars.size(); ++i) {
        const Bar& last = bars[i - 1];
        const Bar& beforeLast = bars[i - 2];
        trade.stop += trade.factor * (trade.extreme - trade.stop);
        trade.stop = trade.rising ? std::min({trade.stop, last.low, beforeLast.low})
                                  : std::max({trade.stop, last.high, beforeLast.high});
        if (trade.IsCrossedBy(bars[i])) {
            trade.Reverse(bars[i], params[0]);
        } else {
            trade.Follow(bars[i], params[1], params[2]);
        }
        stops[i] = trade.stop;
    }
    return {stops};
}

StudyOutputs Ichimoku(const BarSeries& bars, const std::vector<double>& params) {
    const Series highs = Column(bars, &Bar::high);
    const Series lows = Column(bars, &Bar::low);
    const auto middle = [&](double period) {
        const int n = static_cast<int>(period);
        return Combine(Highest(highs, n), Lowest(lows, n), Middle);
    };
    const int shift = static_cast<int>(params[1]) - 1;
    const Series conversion = middle(params[0]);
    const Series base = middle(params[1]);
    return {conversion, base, Shifted(Combine(conversion, base, Middle), shift),
            Shifted(middle(params[2]), shift), Shifted(Column(bars, &Bar::close), -shift)};
}

StudyOutputs PriceChannel(const BarSeries& bars, const std::vector<double>& params) {
    const int period = static_cast<int>(params[0]);
    const Series upper = Highest(Column(bars, &Bar::high), period);
    const Series lower = Lowest(Column(bars, &Bar::low), period);
    return {upper, Combine(upper, lower, Middle), lower};
}

StudyOutputs VolumeWeightedPrice(const BarSeries& bars, const std::vector<double>& params) {
    const int period = static_cast<int>(params[0]);
    const Series prices = TypicalPrices(bars);
    const Series volumes = Column(bars, &Bar::volume);
    const Series turnover = Sum(Combine(prices, volumes, std::multiplies<>()), period);
    const Series traded = Sum(volumes, period);
    Series average = Sma(prices, period);
    for (std::size_t i = 0; i < average.size(); ++i) {
        average[i] = Ratio(turnover[i], traded[i], average[i]);
    }
    return {average};
}

}  // namespace ta::terminal::calculation
