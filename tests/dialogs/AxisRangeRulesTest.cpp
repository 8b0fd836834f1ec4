// The rules of the axis dialogs that need no window.

#include "dialogs/AxisRangeRules.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

namespace ta::test {
namespace {

using namespace ta::axis;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(AxisRangeRules, DigitsAreCountedWithTheirQuirk) {
    const struct {
        const char* text;
        int digits;
    } cases[] = {{"12.345", 3},
                 {"12", -1},
                 {"-0.5", 2},
                 {"0.5", 1},
                 {"-1.5", 1},
                 {"", -2},
                 {".5", 0},
                 {" 1.25", 3},
                 {"12345678901.5", 2},
                 {"+1.5", 2},
                 {"-99999999999.5", 2},
                 {"abc", 1},
                 {"1e3", 1},
                 {"007.5", 3}};
    for (const auto& each : cases) {
        EXPECT_EQ(UserInputDigits(each.text), each.digits) << each.text;
    }
}

TEST(AxisRangeRules, TextThatIsNoNumberIsZero) {
    const struct {
        const char* text;
        double value;
    } cases[] = {{"12.5", 12.5},    {" -3 ", -3}, {"+7", 7},
                 {"1e3", 1000},     {".5", 0.5},  {"5.", 5},
                 {"", 0},           {"abc", 0},   {"12abc", 0},
                 {"1,234", 0},      {"inf", 0},   {"-inf", 0},
                 {"nan", 0},        {"1e999", 0}, {"0x10", 0},
                 {"\xa2\xb0.5", 0}, {"+-5", 0},   {"1 2", 0},
                 {"-", 0},          {"+", 0},     {"\xa2\xb0\xa2\xb1", 0}};  // full-width digits
    for (const auto& each : cases) {
        EXPECT_EQ(NumberOfText(each.text), each.value) << each.text;
    }
}

TEST(AxisRangeRules, PercentagesAreLeadingIntegers) {
    EXPECT_EQ(IntegerOfText("12"), 12);
    EXPECT_EQ(IntegerOfText(" 50%"), 50);
    EXPECT_EQ(IntegerOfText("-1"), -1);
    EXPECT_EQ(IntegerOfText("99.9"), 99);
    EXPECT_EQ(IntegerOfText("abc"), 0);
    EXPECT_EQ(IntegerOfText("1,000"), 0);
    EXPECT_EQ(IntegerOfText("99999999999999999999"), INT_MAX);
    EXPECT_EQ(IntegerOfText("-99999999999999999999"), INT_MIN);
}

TEST(AxisRangeRules, TheShownTextReadsBackAsTheNumberGiven) {
    for (const double value : {0.0, -0.0, 100.0, 0.1, -0.5, 1234.5678, 0.1234564, 0.1234566, 1e-7,
                               -1e-7, 999999999.99, 123456789012345.678, 1e22, 1e300, -2.5}) {
        EXPECT_EQ(NumberOfText(TextOfNumber(value)), RoundedByText(value)) << value;
        EXPECT_LE(std::abs(RoundedByText(value) - value), std::max(5e-7, std::abs(value) * 1e-15));
    }
    EXPECT_EQ(TextOfNumber(1200), "1200");
    EXPECT_EQ(TextOfNumber(-0.25), "-0.25");
    EXPECT_EQ(TextOfNumber(-1e-7), "0");
    EXPECT_EQ(RoundedByText(0.1234567), 0.123457);
    EXPECT_EQ(TextOfNumber(kInfinity), "0");
    EXPECT_EQ(TextOfNumber(std::nan("")), "0");
}

TEST(AxisRangeRules, EitherBoundMayBeUnknown) {
    constexpr double kOther = 5;
    for (const double unknown : {999999999.99, -999999999.99}) {
        EXPECT_TRUE(IsUnknown({unknown, kOther}));
        EXPECT_TRUE(IsUnknown({kOther, unknown}));
    }
    EXPECT_FALSE(IsUnknown({999999999, kOther}));
}

TEST(AxisRangeRules, OrderAndBounds) {
    const Range bounds{100, 0};
    const Range level{50, 50};
    EXPECT_EQ(CheckRange({100, 0}, bounds), RangeFault::None);
    EXPECT_EQ(CheckRange({120, 10}, bounds), RangeFault::AboveMaximum);
    EXPECT_EQ(CheckRange({50, -1}, bounds), RangeFault::BelowMinimum);
    EXPECT_EQ(CheckRange({120, -1}, bounds), RangeFault::AboveMaximum) << "the first of both";
    EXPECT_EQ(CheckRange({10, 120}, bounds), RangeFault::Order);
    EXPECT_EQ(CheckRange({200, 200}, bounds), RangeFault::Order) << "before the bounds";
    EXPECT_EQ(CheckRange(level, bounds), RangeFault::Order);
    EXPECT_EQ(CheckRange(level, level), RangeFault::None);
    EXPECT_EQ(CheckRange({51, 51}, level), RangeFault::AboveMaximum);
}

}  // namespace
}  // namespace ta::test
