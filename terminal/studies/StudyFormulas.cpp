#include "terminal/studies/StudyFormulas.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace ta::terminal::formula {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::size_t FirstValue(const Series& values) {
    const auto first =
        std::ranges::find_if(values, [](double value) { return !std::isnan(value); });
    return static_cast<std::size_t>(first - values.begin());
}

bool Fits(int period, std::size_t count) {
    return period >= 1 && static_cast<std::size_t>(period) <= count;
}

/// finish(merged values) of every full window of `period` values. A window is the tail of one
/// block of `period` values and the head of the next, merged: O(n) for any associative merge, and
/// without the drift of adding and subtracting, so that a window of zeros sums up to zero.
template <class Part, class Merge, class Finish>
Series Windows(const Series& values, int period, Merge merge, Finish finish) {
    Series result(values.size(), kNaN);
    const std::size_t first = FirstValue(values);
    if (!Fits(period, values.size() - first)) {
        return result;
    }
    const auto length = static_cast<std::size_t>(period);
    std::vector<Part> tails(length, Part(0.0));
    Part head(0.0);
    for (std::size_t i = first; i < values.size(); ++i) {
        const std::size_t k = (i - first) % length;
        head = k == 0 ? Part(values[i]) : merge(head, Part(values[i]));
        if (k + 1 == length) {
            result[i] = finish(head);
            tails[k] = Part(values[i]);
            for (std::size_t j = 1; j < length; ++j) {
                tails[k - j] = merge(Part(values[i - j]), tails[k - j + 1]);
            }
        } else if (i - first >= length) {
            result[i] = finish(merge(tails[k + 1], head));
        }
    }
    return result;
}

/// Count, mean and sum of squared distances from the mean, merged as by Chan, Golub and LeVeque
/// (1979). Equal values give exactly their value as mean and 0 as sum.
struct Moments {
    explicit Moments(double value) : mean(value) {}
    double count = 1;
    double mean;
    double squares = 0;
};

Moments MergeMoments(const Moments& older, const Moments& newer) {
    Moments merged(0);
    merged.count = older.count + newer.count;
    const double delta = newer.mean - older.mean;
    merged.mean = older.mean + delta * newer.count / merged.count;
    merged.squares =
        older.squares + newer.squares + delta * delta * older.count * newer.count / merged.count;
    return merged;
}

/// Count, sum, and sum weighted by the place, from 1 for the oldest.
struct WeightedPart {
    explicit WeightedPart(double value) : sum(value), weighted(value) {}
    double count = 1;
    double sum;
    double weighted;
};

WeightedPart MergeWeighted(const WeightedPart& older, const WeightedPart& newer) {
    WeightedPart merged(older.sum + newer.sum);
    merged.count = older.count + newer.count;
    merged.weighted = older.weighted + newer.weighted + older.count * newer.sum;
    return merged;
}

/// Weight 1 / `length` for the newest value, started with the simple average of `period` values.
Series Smoothed(const Series& values, int period, double length) {
    Series result(values.size(), kNaN);
    const std::size_t first = FirstValue(values);
    if (!Fits(period, values.size() - first)) {
        return result;
    }
    const std::size_t seed = first + static_cast<std::size_t>(period) - 1;
    double average = 0;
    for (std::size_t i = first; i <= seed; ++i) {
        average += (values[i] - average) / static_cast<double>(i - first + 1);
    }
    result[seed] = average;
    for (std::size_t i = seed + 1; i < values.size(); ++i) {
        average += (values[i] - average) / length;
        result[i] = average;
    }
    return result;
}

}  // namespace

Series Column(const BarSeries& bars, double Bar::*field) {
    Series result(bars.size());
    std::ranges::transform(bars, result.begin(), field);
    return result;
}

Series TypicalPrices(const BarSeries& bars) {
    Series result(bars.size());
    std::ranges::transform(bars, result.begin(),
                           [](const Bar& bar) { return (bar.high + bar.low + bar.close) / 3; });
    return result;
}

Series TrueRanges(const BarSeries& bars) {
    Series result(bars.size());
    for (std::size_t i = 0; i < bars.size(); ++i) {
        const double before = i == 0 ? bars[i].high : bars[i - 1].close;
        result[i] = std::max(bars[i].high, before) - std::min(bars[i].low, before);
    }
    return result;
}

Series Sma(const Series& values, int period) {
    return Windows<Moments>(values, period, MergeMoments,
                            [](const Moments& window) { return window.mean; });
}

Series Wma(const Series& values, int period) {
    return Windows<WeightedPart>(values, period, MergeWeighted, [](const WeightedPart& window) {
        return window.weighted / (window.count * (window.count + 1) / 2);
    });
}

Series Ema(const Series& values, int period) {
    return Smoothed(values, period, (period + 1.0) / 2);
}

Series WilderAverage(const Series& values, int period) {
    return Smoothed(values, period, period);
}

Series AverageFrom(const Series& values, int period, double start) {
    Series result(values.size(), kNaN);
    if (period < 1) {
        return result;
    }
    double average = start;
    for (std::size_t i = FirstValue(values); i < values.size(); ++i) {
        average += (values[i] - average) / period;
        result[i] = average;
    }
    return result;
}

Series Sum(const Series& values, int period) {
    return Windows<double>(values, period, std::plus<>(), std::identity());
}

Series Highest(const Series& values, int period) {
    return Windows<double>(
        values, period, [](double a, double b) { return std::max(a, b); }, std::identity());
}

Series Lowest(const Series& values, int period) {
    return Windows<double>(
        values, period, [](double a, double b) { return std::min(a, b); }, std::identity());
}

Series StandardDeviation(const Series& values, int period) {
    return Windows<Moments>(values, period, MergeMoments, [](const Moments& window) {
        return std::sqrt(window.squares / window.count);
    });
}

Series MeanDeviation(const Series& values, int period) {
    Series result = Sma(values, period);
    for (std::size_t i = FirstValue(result); i < result.size(); ++i) {
        double sum = 0;
        for (std::size_t j = i + 1 - static_cast<std::size_t>(period); j <= i; ++j) {
            sum += std::abs(values[j] - result[i]);
        }
        result[i] = sum / period;
    }
    return result;
}

Series Change(const Series& values, int distance) {
    return Combine(values, Shifted(values, distance), std::minus<>());
}

Series Shifted(const Series& values, int bars) {
    Series result(values.size(), kNaN);
    const auto size = static_cast<std::ptrdiff_t>(values.size());
    const auto shift = std::clamp<std::ptrdiff_t>(bars, -size, size);
    if (shift >= 0) {
        std::copy(values.begin(), values.end() - shift, result.begin() + shift);
    } else {
        std::copy(values.begin() - shift, values.end(), result.begin());
    }
    return result;
}

SplitSeries SplitByChange(const Series& reference, const Series& amounts) {
    SplitSeries split;
    split.rising.assign(reference.size(), 0);
    split.falling = split.unchanged = split.rising;
    for (std::size_t i = 0; i < reference.size(); ++i) {
        if (i == 0) {
            split.rising[0] = split.falling[0] = split.unchanged[0] = kNaN;
        } else if (reference[i] > reference[i - 1]) {
            split.rising[i] = amounts[i];
        } else if (reference[i] < reference[i - 1]) {
            split.falling[i] = amounts[i];
        } else {
            split.unchanged[i] = amounts[i];
        }
    }
    return split;
}

Series RelativeStrength(const Series& values, int period) {
    const SplitSeries changes = SplitByChange(values, Change(values, 1));
    return Combine(WilderAverage(changes.rising, period), WilderAverage(changes.falling, period),
                   [](double gain, double loss) { return 100 * Ratio(gain, gain - loss, 0.5); });
}

double PercentPosition(double value, double low, double high) {
    constexpr double kRounding = 1e-12;
    const double range = high - low;
    if (range <= kRounding * std::max(std::abs(low), std::abs(high))) {
        return 50;
    }
    return 100 * (value - low) / range;
}

double Ratio(double numerator, double denominator, double ifZero) {
    // An average that decays through a long flat stretch ends in numbers too small to divide by.
    constexpr double kNothing = 1e-250;
    return std::abs(denominator) < kNothing ? ifZero : numerator / denominator;
}

}  // namespace ta::terminal::formula
