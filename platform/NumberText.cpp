#include "platform/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace ta {
namespace {

constexpr double kScales[kMostDecimals + 1] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
// Up to here a double tells halves from what lies beside them.
constexpr double kLargestScaled = 1e15;
// The longest number: the digits of the largest double, the sign, the point and the decimals.
constexpr std::size_t kLongestText = std::numeric_limits<double>::max_exponent10 + 16;

bool AppendNotFinite(CString& out, double value) {
    if (std::isfinite(value)) {
        return false;
    }
    out += std::isnan(value) ? "nan" : value > 0 ? "inf" : "-inf";
    return true;
}

void AppendScaled(CString& out, std::int64_t scaled, int decimals, bool negative) {
    // From the last digit to the first, at least one of them before the point.
    char text[24];
    char* const end = text + sizeof text;
    char* first = end;
    auto rest = static_cast<std::uint64_t>(scaled < 0 ? -scaled : scaled);
    for (int digit = 0; digit <= decimals || rest > 0; ++digit) {
        if (digit == decimals && decimals > 0) {
            *--first = '.';
        }
        *--first = static_cast<char>('0' + rest % 10);
        rest /= 10;
    }
    if (negative) {
        *--first = '-';
    }
    out.append(first, end);
}

}  // namespace

bool ScaleToInteger(double value, int decimals, std::int64_t& scaled) {
    const double product = value * kScales[decimals];
    if (!(std::abs(product) < kLargestScaled)) {
        return false;
    }
    // The product is rounded, but never from one side of a half to the other: only when it is a
    // half itself may the exact product lie beside it.
    const auto whole = static_cast<std::int64_t>(product);
    const double rest = product - static_cast<double>(whole);
    if (std::abs(rest) == 0.5) {
        return false;
    }
    scaled = whole + (rest > 0.5 ? 1 : 0) - (rest < -0.5 ? 1 : 0);
    return true;
}

void AppendFixed(CString& out, double value, int decimals) {
    if (AppendNotFinite(out, value)) {
        return;
    }
    const int places = std::clamp(decimals, 0, kMostDecimals);
    std::int64_t scaled = 0;
    if (ScaleToInteger(value, places, scaled)) {
        AppendScaled(out, scaled, places, std::signbit(value));
        return;
    }
    char text[kLongestText];
    out.append(
        text, std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, places).ptr);
}

void AppendShortest(CString& out, double value) {
    if (AppendNotFinite(out, value)) {
        return;
    }
    char text[32];
    out.append(text, std::to_chars(text, text + sizeof text, value).ptr);
}

void AppendPadded(CString& out, std::int64_t number, int digits) {
    char text[24];
    const char* const end = std::to_chars(text, text + sizeof text, number).ptr;
    const auto missing = digits - static_cast<int>(end - text);
    out.append(static_cast<std::size_t>(std::max(missing, 0)), '0');
    out.append(static_cast<const char*>(text), end);
}

}  // namespace ta
