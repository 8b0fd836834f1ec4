#pragma once

#include <QString>

namespace ta::terminal {

struct ValueSpan;

/// What a pane's values are, which says how they are written.
enum class NumberKind {
    Price,   ///< with the decimals of the symbol's price step
    Volume,  ///< whole numbers, large ones shortened
    Plain,   ///< two decimals, large ones shortened
    Percent,
};

/// A value as a legend shows it. A missing one (NaN) is a dash.
QString NumberText(double value, NumberKind kind, int priceDecimals);

/// A large number in the units of the language in use (萬 and 億, K and M), with up to two
/// decimals; a smaller one with `decimals`.
QString ShortNumberText(double value, int decimals);

/// The widest of the texts that NumberText gives of the values of a span, and of a missing one.
QString WidestNumberText(const ValueSpan& span, NumberKind kind, int priceDecimals);

}  // namespace ta::terminal
