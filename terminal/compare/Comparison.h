#pragma once

#include "platform/Study.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace ta::terminal {

/// In what a comparison shows its symbols.
enum class ComparisonMode {
    Percent,  ///< change since the base in percent of the base price
    Indexed,  ///< the base price is 100
    Prices,
};

/// The bar that a symbol's values are counted from.
struct ComparisonBase {
    int bar = -1;  ///< index in the symbol's bars; -1: there are none
    double time = 0;
    double price = 0;      ///< its close
    bool isLater = false;  ///< the symbol begins after the base date, and this is its first bar

    bool IsThere() const { return bar >= 0; }
};

/// One symbol on the common time axis.
struct ComparisonLine {
    ComparisonBase base;
    /// For each bar of the axis the symbol's bar there or, where it has none, its last one before;
    /// -1 before its first bar and after its last.
    std::vector<int> bars;
    /// For each bar of the axis the close, counted as the mode says; NaN where `bars` has none.
    std::vector<double> values;
    /// The base price is 0 or below, and the values are price differences to it.
    bool isDifference = false;

    bool HasBarAt(int axisBar) const;
};

/// Symbols side by side: lines in the order of the histories, on one time axis.
struct Comparison {
    /// A bar for each time that any symbol has one at, with that time and nothing else.
    std::shared_ptr<const BarSeries> axis;
    std::vector<ComparisonLine> lines;
    int period = 0;  ///< of the bars, as BarsKey::period
};

/// What the bars of one day, week (from Monday on), month or moment have in common, by the data
/// period as BarsKey::period has it. Ascends with time.
std::int64_t PlaceOf(double time, int period);

/// Where the symbols stand: each day, week (from Monday on), month or moment of any history is one
/// bar of the axis, at the latest time in it. `histories` may be null or empty; such a line has no
/// bars. `period` as BarsKey::period.
Comparison Align(const std::vector<std::shared_ptr<const BarSeries>>& histories, int period);

/// Counts the lines of what Align() made of `histories`. `baseDate`: days since 1970-01-01. Among
/// days, weeks and months it stands for the one that it is in, whatever day of it their bars carry;
/// among minutes for that moment or, without a fraction, the whole day. A symbol's base is its last
/// bar there or before, or its first bar. 0: the first bar of the axis is the base date.
void Count(Comparison& comparison, const std::vector<std::shared_ptr<const BarSeries>>& histories,
           double baseDate, ComparisonMode mode);

}  // namespace ta::terminal
