#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <cstdint>

/// Numbers as text without a printf for each: what fills tables and files. No locale has a part in
/// it: the point is ".", and there are no thousands separators.
namespace ta {

/// The most decimals that AppendFixed writes.
constexpr int kMostDecimals = 9;

/// Puts `value` × 10^`decimals`, rounded as printf rounds, into `scaled`. `decimals` is 0 to
/// kMostDecimals. false, and `scaled` stays as it was, for a value that only exact arithmetic can
/// round (a tie), for one whose product has more than 15 digits, and for what is not finite.
TADIALOGS_EXPORT bool ScaleToInteger(double value, int decimals, std::int64_t& scaled);

/// Appends the text that printf's "%.*lf" gives: "-0" for what rounds to zero from below included.
/// `decimals` is brought into 0 to kMostDecimals. What is not finite is "inf", "-inf" or "nan".
TADIALOGS_EXPORT void AppendFixed(CString& out, double value, int decimals);

/// Appends the shortest text that reads back as the same number: "0.1", "1e+300", "-0"; "inf",
/// "-inf" or "nan" for what is not finite.
TADIALOGS_EXPORT void AppendShortest(CString& out, double value);

/// Appends `number`, which is not negative, with zeros in front up to `digits` digits.
TADIALOGS_EXPORT void AppendPadded(CString& out, std::int64_t number, int digits);

}  // namespace ta
