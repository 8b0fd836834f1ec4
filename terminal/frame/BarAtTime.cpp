#include "terminal/frame/BarAtTime.h"

#include "terminal/compare/Comparison.h"
#include "terminal/quotes/MarketData.h"

#include <algorithm>
#include <cmath>

namespace ta::terminal {
namespace {

constexpr double kHalfSecond = 0.5 / 86400;

int BarOfPlace(const BarSeries& bars, int period, double time) {
    const auto placeOf = [period](const Bar& bar) { return PlaceOf(bar.time, period); };
    const auto place = PlaceOf(time, period);
    if (bars.empty() || place > placeOf(bars.back())) {
        return -1;
    }
    return static_cast<int>(std::ranges::upper_bound(bars, place, {}, placeOf) - bars.begin()) - 1;
}

int BarOfMoment(const BarSeries& bars, double moment) {
    const auto isOnDay = [&moment](const Bar& bar) {
        return std::floor(bar.time) == std::floor(moment);
    };
    const auto next = std::ranges::lower_bound(bars, moment - kHalfSecond, {}, &Bar::time);
    if (next != bars.end() && isOnDay(*next)) {
        return static_cast<int>(next - bars.begin());
    }
    const bool isBehind = next == bars.end() && (bars.empty() || !isOnDay(bars.back()));
    return isBehind ? -1 : static_cast<int>(next - bars.begin()) - 1;
}

}  // namespace

int BarAtTime(const BarSeries& bars, int period, double time, int ofPeriod) {
    if (period <= kMonthly) {
        return BarOfPlace(bars, period, time);
    }
    const bool isWholeDay = ofPeriod <= kMonthly;
    return BarOfMoment(bars, isWholeDay ? std::floor(time) + 1 - 2 * kHalfSecond : time);
}

}  // namespace ta::terminal
