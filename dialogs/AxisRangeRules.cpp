#include "dialogs/AxisRangeRules.h"

#include "platform/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

namespace ta::axis {
namespace {

constexpr int kDecimals = 6;  // of "%f"
constexpr std::string_view kBlanks = " \t\r\n";

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

std::string_view WithoutBlanksBefore(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(kBlanks), text.size()));
}

std::string_view WithoutBlanks(std::string_view text) {
    text = WithoutBlanksBefore(text);
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

std::string_view WithoutPlus(std::string_view text) {
    const bool hasPlus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    return text.substr(hasPlus ? 1 : 0);
}

struct Leading {
    int value = 0;
    std::string_view rest;  ///< behind the digits
};

/// As the C library's atoi, with the nearest int in the place of what it leaves open.
Leading LeadingInteger(std::string_view text) {
    text = WithoutPlus(WithoutBlanksBefore(text));
    const bool negative = text.starts_with('-');
    std::int64_t value = 0;
    std::size_t end = negative ? 1 : 0;
    for (; end < text.size() && IsDigit(text[end]); ++end) {
        value = std::min<std::int64_t>(value * 10 + (text[end] - '0'), std::int64_t{1} << 40);
    }
    using Limits = std::numeric_limits<int>;
    value = std::clamp<std::int64_t>(negative ? -value : value, Limits::min(), Limits::max());
    return {static_cast<int>(value), text.substr(end)};
}

}  // namespace

bool IsUnknown(const Range& range) {
    return std::abs(range.maximum) == kUnknownBound || std::abs(range.minimum) == kUnknownBound;
}

double RoundedByText(double value) {
    CString text;
    AppendFixed(text, value, kDecimals);
    return NumberOfText(text);
}

CString TextOfNumber(double value) {
    CString text;
    AppendFixed(text, RoundedByText(value) + 0.0, kDecimals);  // + 0.0 turns -0 into 0
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) {
        text.pop_back();
    }
    return text;
}

double NumberOfText(std::string_view text) {
    text = WithoutPlus(WithoutBlanks(text));
    double value = 0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isNumber = fault == std::errc() && end == text.data() + text.size();
    return isNumber && std::isfinite(value) ? value : 0;
}

int IntegerOfText(std::string_view text) {
    const Leading leading = LeadingInteger(text);
    return leading.rest.starts_with(',') ? 0 : leading.value;
}

int UserInputDigits(std::string_view text) {
    const auto integer = std::to_string(LeadingInteger(text).value).size();
    return static_cast<int>(text.size()) - static_cast<int>(integer) - 1;
}

RangeFault CheckRange(const Range& chosen, const Range& bounds) {
    const bool mayBeEqual = bounds.maximum == bounds.minimum;
    if (chosen.minimum > chosen.maximum || (chosen.minimum == chosen.maximum && !mayBeEqual)) {
        return RangeFault::Order;
    }
    if (chosen.maximum > bounds.maximum) {
        return RangeFault::AboveMaximum;
    }
    return chosen.minimum < bounds.minimum ? RangeFault::BelowMinimum : RangeFault::None;
}

}  // namespace ta::axis
