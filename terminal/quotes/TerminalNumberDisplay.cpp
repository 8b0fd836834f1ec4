#include "terminal/quotes/TerminalNumberDisplay.h"

#include "platform/NumberText.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdint>
#include <numeric>
#include <optional>

namespace ta::terminal {
namespace {

constexpr int kMostNeeded = 6;
constexpr unsigned char kLastFractionCode = 8;
// Above this a double has no fraction to show, and numerators would not fit.
constexpr double kLargestFraction = 1e15;
const CString kNotAvailable = "N/A";

CString WithoutMinusZero(CString text) {
    if (text.starts_with('-') && text.find_first_not_of("-0.") == CString::npos) {
        text.erase(0, 1);
    }
    return text;
}

CString WithoutTrailingZeros(CString text) {
    if (text.find('.') != CString::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.ends_with('.')) {
            text.pop_back();
        }
    }
    return text;
}

// Nothing for a code that asks for as few decimals as the value needs.
std::optional<int> DecimalsOf(int code) {
    if (code == 31 || code == 41) {
        return 1;
    }
    if (code == -9) {
        return 2;
    }
    return code >= 0 && code <= 29 ? std::optional(code % 10) : std::nullopt;
}

struct Fraction {
    const char* sign = "";
    std::int64_t whole = 0;
    std::int64_t numerator = 0;
    std::int64_t denominator = 1;
};

std::optional<Fraction> FractionOf(double value, unsigned char code) {
    if (code < 1 || code > kLastFractionCode || !(std::abs(value) < kLargestFraction)) {
        return std::nullopt;
    }
    Fraction fraction;
    fraction.denominator = std::int64_t{1} << code;
    const std::int64_t parts =
        std::llround(std::abs(value) * static_cast<double>(fraction.denominator));
    fraction.sign = value < 0 && parts != 0 ? "-" : "";
    fraction.whole = parts / fraction.denominator;
    fraction.numerator = parts % fraction.denominator;
    return fraction;
}

CString MixedNumber(const Fraction& fraction) {
    if (fraction.numerator == 0) {
        return fmt::format("{}{}", fraction.sign, fraction.whole);
    }
    const CString part = fmt::format("{}/{}", fraction.numerator, fraction.denominator);
    return fraction.whole == 0 ? fraction.sign + part
                               : fmt::format("{}{} {}", fraction.sign, fraction.whole, part);
}

int DigitsOf(std::int64_t number) {
    return static_cast<int>(std::to_string(number).size());
}

}  // namespace

CString TerminalNumberDisplay::CApi_DisplayDouble(double value, int code) const {
    if (!std::isfinite(value)) {
        return std::isnan(value) ? CString() : kNotAvailable;
    }
    const auto decimals = DecimalsOf(code);
    CString text;
    AppendFixed(text, value, decimals.value_or(kMostNeeded));
    return WithoutMinusZero(decimals ? std::move(text) : WithoutTrailingZeros(std::move(text)));
}

CString TerminalNumberDisplay::CApi_DisplayDenominator(double value,
                                                       unsigned char fractionCode) const {
    const auto fraction = FractionOf(value, fractionCode);
    return fraction ? MixedNumber(*fraction) : kNotAvailable;
}

CString TerminalNumberDisplay::CApi_DisplayFraction2Dot(double value,
                                                        unsigned char fractionCode) const {
    const auto fraction = FractionOf(value, fractionCode);
    if (!fraction) {
        return kNotAvailable;
    }
    return fmt::format("{}{}.{:0{}}", fraction->sign, fraction->whole, fraction->numerator,
                       DigitsOf(fraction->denominator - 1));
}

CString TerminalNumberDisplay::CApi_DisplayFraction2SpecialDecimail(
    double value, unsigned char fractionCode) const {
    const auto fraction = FractionOf(value, fractionCode);
    if (!fraction) {
        return kNotAvailable;
    }
    const CString whole = fmt::format("{}{}'", fraction->sign, fraction->whole);
    const std::int64_t partsOf32nd = fraction->denominator / 32;
    if (partsOf32nd <= 1) {
        return whole +
               fmt::format("{:0{}}", fraction->numerator, DigitsOf(fraction->denominator - 1));
    }
    return whole + fmt::format("{:02}{}", fraction->numerator / partsOf32nd,
                               fraction->numerator % partsOf32nd * 10 / partsOf32nd);
}

CString TerminalNumberDisplay::CApi_DisplayFraction2MixType(double value,
                                                            unsigned char fractionCode) const {
    auto fraction = FractionOf(value, fractionCode);
    if (!fraction) {
        return kNotAvailable;
    }
    const std::int64_t divisor = std::gcd(fraction->numerator, fraction->denominator);
    fraction->numerator /= divisor;
    fraction->denominator /= divisor;
    return MixedNumber(*fraction);
}

}  // namespace ta::terminal
