// Symbols on one time axis and what their values are counted from; no window.

#include "terminal/compare/ComparisonModel.h"
#include "terminal/plot/PlotTheme.h"

#include <gtest/gtest.h>

#include <QDate>
#include <QPalette>

#include <cmath>

namespace ta::terminal {
namespace {

using Histories = std::vector<std::shared_ptr<const BarSeries>>;
using Closes = std::vector<std::pair<double, double>>;  // time and close

std::shared_ptr<const BarSeries> Bars(const Closes& closes) {
    auto bars = std::make_shared<BarSeries>();
    for (const auto& [time, close] : closes) {
        bars->push_back({time, close, close, close, close, 1});
    }
    return bars;
}

double Day(int year, int month, int day) {
    return static_cast<double>(QDate(1970, 1, 1).daysTo(QDate(year, month, day)));
}

std::vector<double> Times(const Comparison& comparison) {
    std::vector<double> times;
    for (const Bar& bar : *comparison.axis) {
        times.push_back(bar.time);
    }
    return times;
}

/// NaN as -999.
std::vector<double> Values(const ComparisonLine& line) {
    std::vector<double> values = line.values;
    for (double& value : values) {
        value = std::isnan(value) ? -999 : value;
    }
    return values;
}

Comparison Compared(const Histories& histories, double baseDate = 0,
                    ComparisonMode mode = ComparisonMode::Percent, int period = 0) {
    Comparison comparison = Align(histories, period);
    Count(comparison, histories, baseDate, mode);
    return comparison;
}

TEST(ComparisonTest, MissingDaysAreBridgedAndNeverShifted) {
    const Histories two{Bars({{100, 10}, {101, 11}, {104, 12}, {105, 9}}),
                        Bars({{101, 50}, {102, 60}, {104, 75}})};
    const Comparison comparison = Compared(two, 0, ComparisonMode::Prices);
    EXPECT_EQ(Times(comparison), (std::vector<double>{100, 101, 102, 104, 105}));
    EXPECT_EQ(comparison.lines[0].bars, (std::vector<int>{0, 1, 1, 2, 3}));
    EXPECT_EQ(Values(comparison.lines[0]), (std::vector<double>{10, 11, 11, 12, 9}));
    EXPECT_EQ(Values(comparison.lines[1]), (std::vector<double>{-999, 50, 60, 75, -999}));
    EXPECT_FALSE(comparison.lines[0].HasBarAt(2)) << "bridged";
    EXPECT_TRUE(comparison.lines[0].HasBarAt(3));
    for (const int none : {-1, 0, 4, 5}) {
        EXPECT_FALSE(comparison.lines[1].HasBarAt(none)) << none;
    }
}

TEST(ComparisonTest, WeeksAndMonthsMeetWhateverTheirLastDayOfTrade) {
    // 2020-01-06 is a Monday; the third bars are of different weeks and months.
    const double monday = Day(2020, 1, 6);
    const Histories weeks{Bars({{monday + 4, 1}, {monday + 11, 2}, {monday + 18, 3}}),
                          Bars({{monday + 3, 4}, {monday + 13, 5}, {monday + 21, 6}})};
    EXPECT_EQ(Times(Align(weeks, 1)),
              (std::vector<double>{monday + 4, monday + 13, monday + 18, monday + 21}));
    const Histories months{Bars({{Day(2019, 12, 31), 1}, {Day(2020, 1, 31), 2}}),
                           Bars({{Day(2019, 12, 1), 3}, {Day(2020, 2, 1), 4}})};
    EXPECT_EQ(Times(Align(months, 2)),
              (std::vector<double>{Day(2019, 12, 31), Day(2020, 1, 31), Day(2020, 2, 1)}));
}

TEST(ComparisonTest, MomentsMeetThoughTheirFractionsDiffer) {
    const double nine = 9.0 / 24;
    const Histories two{Bars({{100 + nine, 1}, {100 + nine + 1.0 / 1440, 2}}),
                        Bars({{100 + nine + 1e-9, 3}, {101, 4}})};
    EXPECT_EQ(Align(two, 3).axis->size(), 3U);
    EXPECT_EQ(Align(two, 3).lines[1].bars, (std::vector<int>{0, 0, 1}));
}

struct BaseCase {
    const char* what;
    double baseDate;
    int bar;
    bool isLater;
};

TEST(ComparisonTest, AmongMinutesTheBaseIsTheLastBarAtOrBeforeTheDate) {
    const Histories two{Bars({{100, 10}, {200, 1}}),
                        Bars({{110, 20}, {112 + 9.0 / 24, 40}, {112 + 10.0 / 24, 50}})};
    const BaseCase cases[] = {
        {"none: the first bar of the axis, which this symbol is younger than", 0, 0, true},
        {"before its first bar", 109, 0, true},
        {"on a bar", 110, 0, false},
        {"between two", 111.5, 0, false},
        {"a whole day up to its end", 112, 2, false},
        {"a moment", 112 + 9.0 / 24, 1, false},
        {"a moment less than a second off", 112 + 9.0 / 24 - 1e-9, 1, false},
        {"in the future", 40000, 2, false},
        {"beyond all calendars", 1e300, 2, false},
        {"before all days", -5, 0, true},
    };
    for (const BaseCase& row : cases) {
        const ComparisonBase base = Compared(two, row.baseDate, {}, 3).lines[1].base;
        EXPECT_EQ(std::pair(base.bar, base.isLater), std::pair(row.bar, row.isLater)) << row.what;
        const Bar& bar = (*two[1])[static_cast<std::size_t>(row.bar)];
        EXPECT_EQ(std::pair(base.time, base.price), std::pair(bar.time, bar.close)) << row.what;
    }
    EXPECT_FALSE(Compared(two, 0, {}, 3).lines[0].base.isLater);
}

TEST(ComparisonTest, TheBaseIsInTheSameDayWeekOrMonthForEverySymbol) {
    const double monday = Day(2020, 1, 6);
    const Histories days{Bars({{100, 1}, {101, 2}}), Bars({{100.5, 3}, {101.5, 4}})};
    const Histories weeks{Bars({{monday, 1}, {monday + 7, 2}, {monday + 14, 3}}),
                          Bars({{monday + 4, 4}, {monday + 11, 5}, {monday + 18, 6}})};
    const Histories months{
        Bars({{Day(2019, 12, 1), 1}, {Day(2020, 1, 1), 2}, {Day(2020, 2, 1), 3}}),
        Bars({{Day(2019, 12, 31), 4}, {Day(2020, 1, 31), 5}, {Day(2020, 2, 28), 6}})};
    struct Row {
        const Histories& histories;
        int period;
        double baseDate;
        int bar;
        bool isLater;
    };
    const Row rows[] = {
        {days, 0, 0, 0, false},
        {days, 0, 100.25, 0, false},
        {days, 0, 101, 1, false},
        {weeks, 1, monday - 1, 0, true},
        {weeks, 1, monday + 6, 0, false},
        {weeks, 1, monday + 7, 1, false},
        {months, 2, 0, 0, false},
        {months, 2, Day(2019, 11, 30), 0, true},
        {months, 2, Day(2020, 1, 1), 1, false},
        {months, 2, Day(2020, 1, 31), 1, false},
        {months, 2, 1e300, 2, false},
        {months, 2, -1e300, 0, true},
    };
    for (const Row& row : rows) {
        for (const ComparisonLine& line :
             Compared(row.histories, row.baseDate, {}, row.period).lines) {
            EXPECT_EQ(std::pair(line.base.bar, line.base.isLater), std::pair(row.bar, row.isLater))
                << row.period << " at " << row.baseDate;
        }
    }
}

TEST(ComparisonTest, CountsInEachMode) {
    const Histories one{Bars({{1, 50}, {2, 75}, {3, 40}})};
    EXPECT_EQ(Values(Compared(one).lines[0]), (std::vector<double>{0, 50, -20}));
    EXPECT_EQ(Values(Compared(one, 2, ComparisonMode::Indexed).lines[0]),
              (std::vector<double>{50 / 75.0 * 100, 100, 40 / 75.0 * 100}));
    EXPECT_EQ(Values(Compared(one, 2, ComparisonMode::Prices).lines[0]),
              (std::vector<double>{50, 75, 40}));
}

TEST(ComparisonTest, ABaseOfZeroOrBelowGivesDifferences) {
    const Histories two{Bars({{1, -2}, {2, 1}}), Bars({{1, 0}, {2, 3}})};
    for (const auto mode : {ComparisonMode::Percent, ComparisonMode::Indexed}) {
        const Comparison comparison = Compared(two, 0, mode);
        EXPECT_TRUE(comparison.lines[0].isDifference && comparison.lines[1].isDifference);
        EXPECT_EQ(Values(comparison.lines[0]), (std::vector<double>{0, 3}));
        EXPECT_EQ(Values(comparison.lines[1]), (std::vector<double>{0, 3}));
    }
    EXPECT_FALSE(Compared(two, 2).lines[0].isDifference);
    EXPECT_FALSE(Compared(two, 0, ComparisonMode::Prices).lines[0].isDifference);
}

TEST(ComparisonTest, WithoutDataThereIsNoLine) {
    EXPECT_TRUE(Compared({}).axis->empty());
    const Comparison none = Compared({nullptr, Bars({})});
    EXPECT_TRUE(none.axis->empty());
    const Comparison some = Compared({nullptr, Bars({{1, 5}}), Bars({})});
    EXPECT_EQ(some.axis->size(), 1U);
    for (const int line : {0, 2}) {
        const ComparisonLine& empty = some.lines[static_cast<std::size_t>(line)];
        EXPECT_FALSE(empty.base.IsThere() || empty.isDifference);
        EXPECT_EQ(Values(empty), std::vector<double>{-999});
    }
}

// ---- Colours ----

double Linear(double channel) {
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

/// In CIE L*a*b*, where 20 is far apart.
double Distance(const QColor& left, const QColor& right) {
    const auto lab = [](const QColor& colour) {
        const double r = Linear(colour.redF());
        const double g = Linear(colour.greenF());
        const double b = Linear(colour.blueF());
        const double x = std::cbrt((0.4124 * r + 0.3576 * g + 0.1805 * b) / 0.9505);
        const double y = std::cbrt(0.2126 * r + 0.7152 * g + 0.0722 * b);
        const double z = std::cbrt((0.0193 * r + 0.1192 * g + 0.9505 * b) / 1.0888);
        return std::array{116 * y - 16, 500 * (x - y), 200 * (y - z)};
    };
    const auto a = lab(left);
    const auto b = lab(right);
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

TEST(ComparisonTest, ColoursAreApartInLightAndDark) {
    for (const QColor& background : {QColor(Qt::white), QColor(30, 30, 30), QColor(53, 53, 53)}) {
        QPalette palette;
        palette.setColor(QPalette::Base, background);
        palette.setColor(QPalette::Text, background.lightness() > 128 ? Qt::black : Qt::white);
        const PlotTheme theme = PlotTheme::FromPalette(palette, true);
        for (std::size_t i = 0; i < kMostCompared; ++i) {
            const QColor colour = theme.Readable(ComparisonColour(i));
            EXPECT_GT(Distance(colour, background), 30) << i;
            for (std::size_t other = 0; other < i; ++other) {
                EXPECT_GT(Distance(colour, theme.Readable(ComparisonColour(other))), 24)
                    << i << " and " << other << " on " << background.name().toStdString();
            }
        }
    }
}

}  // namespace
}  // namespace ta::terminal
