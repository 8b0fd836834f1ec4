#pragma once

#include "platform/Types.h"

#include <string_view>

/// The rules of the axis dialogs: how numbers are read and written, and which ones are taken. No
/// window is needed for them. Texts are what stands in an edit, in the user's code page.
namespace ta::axis {

/// A bound that the caller does not know is one of these two.
constexpr double kUnknownBound = 999999999.99;
/// Percentages that the space dialog takes, both included.
constexpr int kLeastPercent = 0;
constexpr int kMostPercent = 100;

struct Range {
    double maximum = 0;
    double minimum = 0;
};

/// Whether one of the two is kUnknownBound or its negative: such a range begins as automatic.
bool IsUnknown(const Range& range);

/// `value` printed with "%f" and read back: rounded to 6 decimals. 0 for what is not finite.
double RoundedByText(double value);
/// A text without exponent that NumberOfText reads as RoundedByText(value).
CString TextOfNumber(double value);

/// The decimal number that a text is, blanks around it left out. 0 for a text that is none: also
/// for one that only begins with a number, for grouping signs, for full-width digits, and for "inf"
/// and "nan" or a number too large for a double.
double NumberOfText(std::string_view text);
/// The integer that a text begins with, after blanks: "12.5" and "12%" are 12. The nearest int for
/// one that is too large. 0 without digits, and for digits with a grouping sign behind.
int IntegerOfText(std::string_view text);

/// How many digits behind the point the user has typed, as the digit limit counts them: the
/// bytes of the text, less those of its integer part as a number, less one. -1 for "12", 3 for
/// "12.345"; 2 for "-0.5", whose integer part 0 has no sign.
int UserInputDigits(std::string_view text);

enum class RangeFault { None, Order, AboveMaximum, BelowMinimum };
/// What is wrong with a range that the user chose: its minimum must be below its maximum, or may be
/// equal where the bounds are, and neither may lie outside the bounds.
RangeFault CheckRange(const Range& chosen, const Range& bounds);

}  // namespace ta::axis
