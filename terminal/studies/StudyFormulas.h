#pragma once

#include "platform/Study.h"

#include <cstddef>
#include <vector>

/// The series arithmetic that the studies are made of.
///
/// A series has one value per bar, oldest first. NaNs at its front are the warm-up of the study it
/// comes from: every function starts counting at the first value that is not NaN and gives NaN
/// until it has enough values, so that results can be fed into the next function. Inputs are
/// otherwise finite. A period below 1 or longer than the values at hand gives NaN throughout. A
/// value never depends on later ones. All run in O(n) unless stated.
namespace ta::terminal::formula {

using Series = std::vector<double>;

/// One field of every bar, as in Column(bars, &Bar::close).
Series Column(const BarSeries& bars, double Bar::*field);
/// (high + low + close) / 3.
Series TypicalPrices(const BarSeries& bars);
/// The largest of high - low, |high - previous close|, |low - previous close|; of the first bar
/// high - low. Wilder, New Concepts in Technical Trading Systems (1978).
Series TrueRanges(const BarSeries& bars);

/// Simple moving average of `period` values; the first at the period-th value.
Series Sma(const Series& values, int period);
/// Linearly weighted average: the newest value weighs `period`, the oldest 1.
Series Wma(const Series& values, int period);
/// Exponential average with weight 2 / (period + 1) for the newest value, started at the
/// period-th value with the simple average of the first `period`.
Series Ema(const Series& values, int period);
/// Wilder's average: weight 1 / period for the newest value, started like Ema.
Series WilderAverage(const Series& values, int period);
/// Average with weight 1 / period for the newest value, started at the first value as if `start`
/// had come before it: no warm-up.
Series AverageFrom(const Series& values, int period, double start);

Series Sum(const Series& values, int period);
Series Highest(const Series& values, int period);
Series Lowest(const Series& values, int period);
/// Standard deviation of the last `period` values as a whole population (divided by period).
Series StandardDeviation(const Series& values, int period);
/// Mean distance of the last `period` values from their average. O(n * period).
Series MeanDeviation(const Series& values, int period);

/// values[i] - values[i - distance].
Series Change(const Series& values, int distance);
/// Moved by `bars` to later (positive) or earlier (negative) bars; what falls off is lost.
Series Shifted(const Series& values, int bars);

/// amounts[i], put where the reference rose, fell or stayed from bar i - 1 to i, and 0 in the two
/// others; all NaN at bar 0. Neither input has a warm-up.
struct SplitSeries {
    Series rising;
    Series falling;
    Series unchanged;
};
SplitSeries SplitByChange(const Series& reference, const Series& amounts);

/// Wilder's relative strength index (1978), 0 to 100; 50 while nothing has moved. The first value
/// follows `period` changes.
Series RelativeStrength(const Series& values, int period);

/// Where `value` stands between `low` (0) and `high` (100); 50 when the two are equal but for
/// rounding.
double PercentPosition(double value, double low, double high);

/// numerator / denominator, or `ifZero` when the denominator is 0 or next to nothing.
double Ratio(double numerator, double denominator, double ifZero);

/// The operation's result for every pair of values.
template <class Operation>
Series Combine(const Series& left, const Series& right, Operation operation) {
    Series result(left.size());
    for (std::size_t i = 0; i < left.size(); ++i) {
        result[i] = operation(left[i], right[i]);
    }
    return result;
}

}  // namespace ta::terminal::formula
