#include "platform/Text.h"
#include "terminal/studies/StudyCatalogue.h"
#include "terminal/studies/StudyFormulas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <set>

namespace ta::terminal {
namespace {

using formula::Series;

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

void ExpectSeries(const Series& actual, const Series& expected) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        if (std::isnan(expected[i])) {
            EXPECT_TRUE(std::isnan(actual[i])) << "at " << i << ": " << actual[i];
        } else {
            EXPECT_NEAR(actual[i], expected[i], 1e-9) << "at " << i;
        }
    }
}

bool Same(const Series& left, const Series& right) {
    return std::ranges::equal(
        left, right, [](double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); });
}

bool HasInfinity(const Series& series) {
    return std::ranges::any_of(series, [](double value) { return std::isinf(value); });
}

StudyOutputs Calculate(StudyType type, const BarSeries& bars, const std::vector<double>& params) {
    return FindStudy(type)->GetStudy().vecCalculate(bars, params);
}

std::vector<double> Defaults(const StudyInfo& info) {
    std::vector<double> values;
    for (const StudyParamInfo& param : info.GetParams()) {
        values.push_back(param.defaultValue);
    }
    return values;
}

StudyOutputs WithDefaults(const StudyInfo& info, const BarSeries& bars) {
    return info.GetStudy().vecCalculate(bars, Defaults(info));
}

BarSeries FromCloses(const std::vector<double>& closes) {
    BarSeries bars;
    for (const double close : closes) {
        bars.push_back({static_cast<double>(bars.size()), close, close, close, close, 1});
    }
    return bars;
}

BarSeries FlatBars(std::size_t count, double price, double volume) {
    BarSeries bars = FromCloses(std::vector<double>(count, price));
    for (Bar& bar : bars) {
        bar.volume = volume;
    }
    return bars;
}

/// Prices that wander by steps of 0.05 around 100, with gaps, flat bars and bars without volume.
BarSeries RandomWalk(std::size_t count, unsigned seed = 20240607) {
    std::mt19937 random(seed);
    const auto steps = [&random](unsigned most) { return 0.05 * (random() % (most + 1)); };
    BarSeries bars;
    double price = 100;
    for (std::size_t i = 0; i < count; ++i) {
        Bar bar{static_cast<double>(i), price + steps(10) - 0.25, 0, 0, 0, 0};
        bar.close = std::max(1.0, bar.open + steps(40) - 1);
        bar.high = std::max(bar.open, bar.close) + steps(10);
        bar.low = std::min(bar.open, bar.close) - steps(10);
        bar.volume = i % 17 == 0 ? 0 : random() % 5000;
        bars.push_back(bar);
        price = bar.close;
    }
    return bars;
}

// ---- Series arithmetic ----

TEST(StudyFormulas, APeriodThatDoesNotFitGivesNoValue) {
    const Series values{1, 2, 3};
    const Series none(3, kNone);
    const auto windows = {formula::Sma,           formula::Sum,
                          formula::Wma,           formula::Highest,
                          formula::Lowest,        formula::StandardDeviation,
                          formula::MeanDeviation, formula::Ema,
                          formula::WilderAverage, formula::RelativeStrength};
    for (const int period : {INT_MIN, -1, 0, 4, INT_MAX}) {
        for (auto window = windows.begin(); window != windows.end(); ++window) {
            EXPECT_TRUE(Same((*window)(values, period), none))
                << window - windows.begin() << " of " << period;
            EXPECT_TRUE((*window)({}, period).empty());
        }
    }
    for (const int distance : {3, INT_MAX, -3, INT_MIN}) {
        EXPECT_TRUE(Same(formula::Shifted(values, distance), none)) << distance;
    }
    ExpectSeries(formula::Shifted(values, 1), {kNone, 1, 2});
    ExpectSeries(formula::Shifted(values, -1), {2, 3, kNone});
    ExpectSeries(formula::AverageFrom({kNone, 60, 40}, 2, 50), {kNone, 55, 47.5});
}

TEST(StudyFormulas, WindowsDoNotDrift) {
    // A giant value that left the window must leave no trace behind.
    Series values(1000, 0.1);
    values[3] = 1e17;
    EXPECT_NEAR(formula::Sum(values, 10).back(), 1, 1e-12);
    EXPECT_EQ(formula::Sma(values, 10).back(), 0.1);
    EXPECT_EQ(formula::StandardDeviation(values, 10).back(), 0);
}

// ---- Figures worked out by hand ----

const BarSeries& HandBars() {
    static const BarSeries bars{{0, 10, 12, 9, 11, 100},  {1, 11, 14, 10, 13, 200},
                                {2, 13, 13, 11, 12, 150}, {3, 12, 15, 12, 15, 300},
                                {4, 15, 16, 13, 14, 100}, {5, 14, 14, 10, 10, 400},
                                {6, 10, 12, 8, 12, 250},  {7, 12, 12, 12, 12, 0}};
    return bars;
}

struct HandStudy {
    const char* name;
    StudyType type;
    std::vector<double> params;
};

struct HandCase {
    HandStudy study;
    StudyOutputs expected;
    BarSeries bars = HandBars();
};

/// Exact fractions, worked out window by window from the definitions in the books; the directional
/// movement in Wilder's form with sums (sum - sum / n + new).
std::vector<HandCase> HandCases() {
    const double n = kNone;
    return {
        {{"Candlestick", 0, {}}, {{11, 13, 12, 15, 14, 10, 12, 12}}},
        {{"MA", 4, {3, 8, 1, 9}},
         {{n, n, 12, 40 / 3., 41 / 3., 13, 12, 34 / 3.},
          {n, n, n, n, n, n, n, 99 / 8.},
          {11, 13, 12, 15, 14, 10, 12, 12},
          {n, n, n, n, n, n, n, n}}},
        {{"EMA", 5, {2, 3}},
         {{n, 12, 12, 14, 14, 34 / 3., 106 / 9., 322 / 27.},
          {n, n, 12, 27 / 2., 55 / 4., 95 / 8., 191 / 16., 383 / 32.}}},
        {{"WMA", 6, {1, 3}},
         {{11, 13, 12, 15, 14, 10, 12, 12},
          {n, n, 73 / 6., 41 / 3., 14, 73 / 6., 35 / 3., 35 / 3.}}},
        {{"Bollinger", 7, {3, 1.5}},
         {{n, n, 12 + 1.5 * std::sqrt(2 / 3.), 40 / 3. + 1.5 * std::sqrt(14 / 9.),
           41 / 3. + 1.5 * std::sqrt(14 / 9.), 13 + 1.5 * std::sqrt(14 / 3.),
           12 + 1.5 * std::sqrt(8 / 3.), 34 / 3. + 1.5 * std::sqrt(8 / 9.)},
          {n, n, 12, 40 / 3., 41 / 3., 13, 12, 34 / 3.},
          {n, n, 12 - 1.5 * std::sqrt(2 / 3.), 40 / 3. - 1.5 * std::sqrt(14 / 9.),
           41 / 3. - 1.5 * std::sqrt(14 / 9.), 13 - 1.5 * std::sqrt(14 / 3.),
           12 - 1.5 * std::sqrt(8 / 3.), 34 / 3. - 1.5 * std::sqrt(8 / 9.)}}},
        // Rising from bar 1, held back by the low of bar 0 at bar 2, turned at bar 5 to the highest
        // high, held by it at bar 6, and 16 - 0.2 * 8 at bar 7.
        {{"SAR", 8, {0.1, 0.1, 0.2}}, {{n, 9, 9, 9.5, 10.6, 16, 16, 14.4}}},
        {{"Ichimoku", 9, {2, 3, 4}},
         {{n, 11.5, 12, 13, 14, 13, 11, 10},
          {n, n, 11.5, 12.5, 13.5, 13, 12, 11},
          {n, n, n, n, 11.75, 12.75, 13.75, 13},
          {n, n, n, n, n, 12, 13, 13},
          {12, 15, 14, 10, 12, 12, n, n}}},
        {{"Price channel", 10, {3}},
         {{n, n, 14, 15, 16, 16, 16, 14},
          {n, n, 11.5, 12.5, 13.5, 13, 12, 11},
          {n, n, 9, 10, 11, 10, 8, 8}}},
        {{"VWAP", 11, {3}},
         {{n, n, 320 / 27., 508 / 39., 446 / 33., 305 / 24., 518 / 45., 144 / 13.}}},
        {{"VWAP without volume", 11, {1}},
         {{32 / 3., 37 / 3., 12, 14, 43 / 3., 34 / 3., 32 / 3., 12}}},
        {{"Volume", 16, {1, 3}},
         {{100, 200, 150, 300, 100, 400, 250, 0},
          {100, 200, 150, 300, 100, 400, 250, 0},
          {n, n, 150, 650 / 3., 550 / 3., 800 / 3., 250, 650 / 3.}}},
        {{"OBV", 17, {3}},
         {{0, 200, 50, 350, 250, -150, 100, 100},
          {n, n, 250 / 3., 200, 650 / 3., 150, 200 / 3., 50 / 3.}}},
        {{"VR", 18, {3}}, {{n, n, n, 1000 / 3., 120, 60, 50, 62.5}}},
        {{"MFI", 19, {3}}, {{n, n, n, 10000 / 127., 16900 / 223., 3380 / 61., 4300 / 259., 0}}},
        {{"CMF", 20, {3}}, {{n, n, 8 / 27., 8 / 13., 16 / 33., -1 / 6., -11 / 45., -3 / 13.}}},
        {{"MACD", 22, {2, 3, 2}},
         {{n, n, 0, 1 / 2., 1 / 4., -13 / 24., -23 / 144., -37 / 864.},
          {n, n, n, 1 / 4., 1 / 4., -5 / 18., -43 / 216., -41 / 432.},
          {n, n, n, 1 / 4., 0, -19 / 72., 17 / 432., 5 / 96.}}},
        {{"KD", 23, {3, 3, 3}},
         {{n, n, 160 / 3., 620 / 9., 1780 / 27., 3560 / 81., 11170 / 243., 38540 / 729.},
          {n, n, 460 / 9., 1540 / 27., 60, 13280 / 243., 37730 / 729., 38000 / 729.}}},
        {{"RSI", 24, {2, 3}},
         {{n, n, 200 / 3., 800 / 9., 800 / 13., 160 / 9., 4000 / 77., 4000 / 77.},
          {n, n, n, 250 / 3., 200 / 3., 1000 / 33., 4700 / 93., 4700 / 93.}}},
        {{"Williams", 25, {3}}, {{n, n, -40, 0, -40, -100, -50, -100 / 3.}}},
        {{"CCI", 26, {3}}, {{n, n, 100 / 3., 100, 800 / 13., -100, -65, 100}}},
        {{"Bias", 27, {1, 3}},
         {{0, 0, 0, 0, 0, 0, 0, 0}, {n, n, 0, 12.5, 100 / 41., -300 / 13., 0, 100 / 17.}}},
        {{"PSY", 28, {1, 3}},
         {{n, 100, 0, 100, 0, 0, 100, 0},
          {n, n, n, 200 / 3., 100 / 3., 100 / 3., 100 / 3., 100 / 3.}}},
        {{"MTM", 29, {2, 2}}, {{n, n, 1, 2, 2, -5, -2, 2}, {n, n, n, 1.5, 2, -1.5, -3.5, 0}}},
        {{"ROC", 30, {2, 2}},
         {{n, n, 100 / 11., 200 / 13., 50 / 3., -100 / 3., -100 / 7., 20},
          {n, n, n, 1750 / 143., 625 / 39., -25 / 3., -500 / 21., 20 / 7.}}},
        {{"StochRSI", 31, {2, 2, 2, 2}},
         {{n, n, n, n, 50, 0, 50, 75}, {n, n, n, n, n, 25, 25, 62.5}}},
        {{"DMI", 40, {2}},
         {{n, n, 100 / 3., 50, 125 / 3., 125 / 7., 25 / 3., 25 / 3.},
          {n, n, 0, 0, 0, 300 / 7., 140 / 3., 140 / 3.},
          {n, n, n, 100, 100, 1200 / 17., 39350 / 561., 13075 / 187.}}},
        {{"ATR", 41, {3}}, {{n, n, 3, 3, 3, 10 / 3., 32 / 9., 64 / 27.}}},
        {{"STD", 42, {3}},
         {{n, n, std::sqrt(2 / 3.), std::sqrt(14 / 9.), std::sqrt(14 / 9.), std::sqrt(14 / 3.),
           std::sqrt(8 / 3.), std::sqrt(8 / 9.)}}},
        {{"TRIX", 43, {2, 2}},
         {{n, n, n, n, 1000 / 171., -3400 / 543., -1800 / 509., -5000 / 4419.},
          {n, n, n, n, n, -6400 / 30951., -114681200 / 47262177., -108821999200 / 69617186721.}}},
        // Falling from bar 1 under the higher high; turned at bar 3, whose own low is below the
        // extreme that the falling side had reached. Bar 2: 13 + 0.1 * (9 - 13) = 12.6, held by the
        // high of bar 0. Bar 4: 7 + 0.1 * (14 - 7) = 7.7, held by the low of bar 3.
        {{"SAR falling first", 8, {0.1, 0.1, 0.2}},
         {{n, 13, 13, 7, 7}},
         {{0, 12, 13, 11, 12, 1},
          {1, 11, 12, 9, 9, 1},
          {2, 9, 10, 8, 8, 1},
          {3, 9, 14, 7, 13, 1},
          {4, 13, 15, 13, 15, 1}}},
        // Unchanged bars count half on both sides: (100 + 20) / (60 + 20), then (30 + 20) / 80.
        {{"VR with unchanged bars", 18, {3}},
         {{n, n, n, 150, 62.5}},
         {{0, 1, 1, 1, 1, 9},
          {1, 2, 2, 2, 2, 100},
          {2, 2, 2, 2, 2, 40},
          {3, 1, 1, 1, 1, 60},
          {4, 3, 3, 3, 3, 30}}},
        // Outside bars: up 3 and down 1, up 1 and down 3, then 1 and 1, which counts for neither.
        {{"DMI of outside bars", 40, {2}},
         {{n, n, 300 / 16., 150 / 20.}, {n, n, 300 / 16., 150 / 20.}, {n, n, n, 0}},
         {{0, 9, 10, 8, 9, 1}, {1, 9, 13, 7, 10, 1}, {2, 10, 14, 4, 5, 1}, {3, 5, 15, 3, 9, 1}}}};
}

TEST(StudyByHand, EveryStudyGivesTheTextbookFigures) {
    std::set<StudyType> tested;
    for (const auto& [study, expected, bars] : HandCases()) {
        tested.insert(study.type);
        const StudyOutputs outputs = Calculate(study.type, bars, study.params);
        ASSERT_EQ(outputs.size(), expected.size()) << study.name;
        for (std::size_t i = 0; i < outputs.size(); ++i) {
            SCOPED_TRACE(testing::Message() << study.name << ", output " << i);
            ExpectSeries(outputs[i], expected[i]);
        }
    }
    EXPECT_EQ(tested.size(), AllStudies().size());
}

// ---- What holds for every study ----

/// First bar with a value, per output, with the default parameters.
const std::map<StudyType, std::vector<std::size_t>>& WarmUps() {
    // clang-format off
    static const std::map<StudyType, std::vector<std::size_t>> warmUps{
        {0, {0}}, {4, {4, 9, 19, 59}}, {5, {11, 25}}, {6, {9, 19}}, {7, {19, 19, 19}}, {8, {1}},
        {9, {8, 25, 50, 76, 0}}, {10, {19, 19, 19}}, {11, {19}}, {16, {0, 4, 19}}, {17, {0, 9}},
        {18, {26}}, {19, {14}}, {20, {20}}, {22, {25, 33, 33}}, {23, {8, 8}}, {24, {6, 12}},
        {25, {13}}, {26, {19}}, {27, {9, 19}}, {28, {12, 24}}, {29, {10, 19}}, {30, {12, 17}},
        {31, {29, 31}}, {40, {14, 14, 27}}, {41, {13}}, {42, {19}}, {43, {34, 42}}};
    // clang-format on
    return warmUps;
}

constexpr StudyType kIchimoku = 9;
constexpr std::size_t kLaggingSpan = 4;
constexpr std::size_t kLag = 25;

/// Bars at the end of an output that take their value from later bars.
std::size_t Lag(StudyType type, std::size_t output) {
    return type == kIchimoku && output == kLaggingSpan ? kLag : 0;
}

class EveryStudy : public testing::TestWithParam<StudyType> {
protected:
    const StudyInfo& Info() const { return *FindStudy(GetParam()); }
};

std::vector<StudyType> AllTypes() {
    std::vector<StudyType> types;
    for (const auto& [type, warmUp] : WarmUps()) {
        types.push_back(type);
    }
    return types;
}

INSTANTIATE_TEST_SUITE_P(Table, EveryStudy, testing::ValuesIn(AllTypes()));

TEST_P(EveryStudy, HasValuesFromTheEndOfItsWarmUpOn) {
    const BarSeries bars = RandomWalk(400);
    const StudyOutputs outputs = WithDefaults(Info(), bars);
    ASSERT_EQ(outputs.size(), Info().GetShapes().size());
    ASSERT_EQ(outputs.size(), WarmUps().at(GetParam()).size());
    for (std::size_t k = 0; k < outputs.size(); ++k) {
        ASSERT_EQ(outputs[k].size(), bars.size());
        const std::size_t first = WarmUps().at(GetParam())[k];
        const std::size_t end = bars.size() - Lag(GetParam(), k);
        for (std::size_t i = 0; i < bars.size(); ++i) {
            EXPECT_EQ(std::isfinite(outputs[k][i]), i >= first && i < end)
                << "output " << k << " at " << i << ": " << outputs[k][i];
        }
    }
}

TEST_P(EveryStudy, DoesNotLookAheadAndIsDeterministic) {
    const BarSeries bars = RandomWalk(300);
    const StudyOutputs whole = WithDefaults(Info(), bars);
    for (const std::size_t length : {0U, 1U, 2U, 27U, 53U, 150U, 299U, 300U}) {
        const auto end = static_cast<std::ptrdiff_t>(length);
        const StudyOutputs part = WithDefaults(Info(), BarSeries(bars.begin(), bars.begin() + end));
        for (std::size_t k = 0; k < whole.size(); ++k) {
            const auto known =
                static_cast<std::ptrdiff_t>(length - std::min(length, Lag(GetParam(), k)));
            EXPECT_TRUE(Same(Series(part[k].begin(), part[k].begin() + known),
                             Series(whole[k].begin(), whole[k].begin() + known)))
                << "output " << k << " of " << length << " bars";
        }
    }
}

TEST_P(EveryStudy, StandsFlatPricesAndNoVolume) {
    for (const double price : {101.1, 0.0, -37.63}) {
        for (const double volume : {0.0, 1000.3}) {
            const StudyOutputs outputs = WithDefaults(Info(), FlatBars(200, price, volume));
            for (std::size_t k = 0; k < outputs.size(); ++k) {
                SCOPED_TRACE(testing::Message() << price << ", " << volume << ", output " << k);
                const std::size_t first = WarmUps().at(GetParam())[k];
                const std::size_t last = 199 - Lag(GetParam(), k);
                ASSERT_TRUE(std::isfinite(outputs[k][last]));
                for (std::size_t i = first; i <= last; ++i) {
                    EXPECT_NEAR(outputs[k][i], outputs[k][last], 1e-9) << i;
                }
            }
        }
    }
}

/// The largest or smallest parameters that keep the rules.
std::vector<double> Extremes(const StudyInfo& info, bool largest) {
    std::vector<double> values;
    for (const StudyParamInfo& param : info.GetParams()) {
        values.push_back(largest ? param.maximum : param.minimum);
    }
    for (const StudyRule& rule : FindStudyDefinition(info.GetStudyType())->rules) {
        const auto lower = static_cast<std::size_t>(rule.lower);
        const auto upper = static_cast<std::size_t>(rule.upper);
        (largest ? values[lower] : values[upper]) = values[lower] + (largest ? -1 : 1);
    }
    return values;
}

TEST_P(EveryStudy, StandsShortAndExtremeSeriesAndParameters) {
    BarSeries rising;
    for (int i = 0; i < 300; ++i) {
        rising.push_back({1.0 * i, 1.0 + i, 3.0 + i, 0.5 + i, 2.0 + i, 10});
    }
    const BarSeries falling(rising.rbegin(), rising.rend());
    for (const auto& params : {Defaults(Info()), Extremes(Info(), false), Extremes(Info(), true)}) {
        for (const BarSeries& bars : {BarSeries(), RandomWalk(1), RandomWalk(2), RandomWalk(5),
                                      RandomWalk(60), rising, falling}) {
            const StudyOutputs outputs = Info().GetStudy().vecCalculate(bars, params);
            ASSERT_EQ(outputs.size(), Info().GetShapes().size());
            for (const Series& output : outputs) {
                EXPECT_EQ(output.size(), bars.size());
                EXPECT_FALSE(HasInfinity(output));
            }
        }
    }
}

TEST_P(EveryStudy, TakesDefaultsForUnusableParameters) {
    const BarSeries bars = RandomWalk(200);
    const StudyOutputs expected = WithDefaults(Info(), bars);
    const std::size_t count = Info().GetParams().size();
    for (const double bad : {kNone, std::numeric_limits<double>::infinity(), -5.0, 1e300}) {
        const StudyOutputs actual =
            Info().GetStudy().vecCalculate(bars, std::vector<double>(count, bad));
        for (std::size_t k = 0; k < expected.size(); ++k) {
            EXPECT_TRUE(Same(actual[k], expected[k])) << "output " << k << " with " << bad;
        }
    }
    const StudyOutputs missing = Info().GetStudy().vecCalculate(bars, {});
    EXPECT_TRUE(Same(missing[0], expected[0]));
}

TEST(StudyDegenerate, KnownAnswersWithoutMovementOrVolume) {
    const BarSeries flat = FlatBars(100, 101.1, 0);
    const std::map<StudyType, double> last{{18, 100}, {19, 50},  {20, 0},    {22, 0}, {23, 50},
                                           {24, 50},  {25, -50}, {26, 0},    {27, 0}, {28, 0},
                                           {29, 0},   {30, 0},   {31, 50},   {40, 0}, {41, 0},
                                           {42, 0},   {43, 0},   {11, 101.1}};
    for (const auto& [type, expected] : last) {
        EXPECT_NEAR(WithDefaults(*FindStudy(type), flat)[0].back(), expected, 1e-9) << type;
    }
    // Nothing but rises: no volume to divide by.
    BarSeries rising = FromCloses({1, 2, 3, 4, 5, 6});
    EXPECT_TRUE(std::isnan(Calculate(18, rising, {3})[0].back()));
    EXPECT_EQ(Calculate(24, rising, {2, 3})[0].back(), 100);
    EXPECT_EQ(Calculate(19, rising, {3})[0].back(), 100);
}

TEST(StudyDegenerate, AMarketThatFallsAsleepGivesNoNoise) {
    BarSeries bars = RandomWalk(100);
    const BarSeries flat = FlatBars(15000, bars.back().close, 1);
    bars.insert(bars.end(), flat.begin(), flat.end());
    const Series rsi = Calculate(24, bars, {6, 12})[1];
    for (std::size_t i = 101; i < rsi.size(); ++i) {
        // Wilder's averages decay together: their ratio stays until they are gone.
        ASSERT_TRUE(std::abs(rsi[i] - rsi[100]) < 1e-6 || rsi[i] == 50) << i << ": " << rsi[i];
    }
    EXPECT_EQ(rsi.back(), 50);
    const Series stochastic = Calculate(31, bars, {14, 14, 3, 3})[0];
    EXPECT_EQ(stochastic[5000], 50);
    EXPECT_EQ(WithDefaults(*FindStudy(40), bars)[0].back(), 0);
}

TEST(StudyTable, NamesAreWholeUniqueAndFreeOfLegendDecoration) {
    std::set<StudyType> types;
    std::set<CString> names;
    for (const StudyInfo* info : AllStudies()) {
        EXPECT_TRUE(types.insert(info->GetStudyType()).second) << info->GetStudyType();
        for (const CString& name : {info->cszGetChineseName(), info->cszGetEnglishName()}) {
            SCOPED_TRACE(text::ToUtf8(name));
            EXPECT_TRUE(names.insert(name).second);
            EXPECT_FALSE(name.empty());
            EXPECT_EQ(name, text::Trim(name));
            EXPECT_EQ(name.find_first_of("-($?"), CString::npos);
            EXPECT_NE(name.front(), '*');
        }
        EXPECT_FALSE(info->cszGetAbbreviation().empty());
        const auto expectNames = [&](const auto& named) {
            EXPECT_EQ(named.chineseName.find('?'), CString::npos) << info->GetStudyType();
            EXPECT_FALSE(named.chineseName.empty() || named.englishName.empty());
        };
        std::ranges::for_each(info->GetParams(), expectNames);
        std::ranges::for_each(info->GetShapes(), expectNames);
    }
    EXPECT_EQ(text::ToUtf8(FindStudy(4)->cszGetChineseName()), "移動平均線");
}

// ---- Rules between parameters ----

struct RuleCase {
    StudyType type;
    std::vector<double> values;
    std::vector<int> faults;  ///< parameters that a fault is shown at
};

TEST(StudyRules, NameTheParameter) {
    const std::vector<RuleCase> cases{
        {22, {12, 26, 9}, {}},       {22, {26, 26, 9}, {0}},      {22, {27, 26, 9}, {0}},
        {22, {25, 26, 900}, {}},     {9, {9, 26, 52}, {}},        {9, {26, 26, 52}, {0}},
        {9, {9, 26, 26}, {1}},       {9, {52, 26, 9}, {0, 1}},    {8, {0.02, 0.02, 0.02}, {}},
        {8, {0.21, 0.02, 0.2}, {0}}, {8, {0.02, 0.21, 0.2}, {1}}, {8, {1, 1, 0.2}, {0, 1}},
        {4, {60, 20, 10, 5}, {}},    {16, {20, 5}, {0}},          {22, {kNone, 26, 9}, {0}},
    };
    for (const RuleCase& test : cases) {
        SCOPED_TRACE(testing::Message()
                     << test.type << " with " << testing::PrintToString(test.values));
        std::vector<int> parameters;
        for (const StudyParamFault& fault : FindStudy(test.type)->vecCheckParams(test.values)) {
            parameters.push_back(fault.parameter);
        }
        EXPECT_EQ(parameters, test.faults);
    }
}

}  // namespace
}  // namespace ta::terminal
