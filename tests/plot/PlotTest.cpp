// The parts of the chart view that need no window: range, slices, geometry, texts.

#include "terminal/lang/Language.h"
#include "terminal/plot/PlotMapping.h"
#include "terminal/plot/PlotNumbers.h"
#include "terminal/plot/PlotRange.h"
#include "terminal/plot/PlotSlice.h"
#include "terminal/plot/PlotTheme.h"
#include "terminal/plot/PriceLevels.h"
#include "terminal/plot/TimeAxis.h"

#include <gtest/gtest.h>

#include <QDate>

#include <cmath>
#include <limits>

namespace ta::terminal {
namespace {

double DayOfDate(int year, int month, int day) {
    return static_cast<double>(QDate(1970, 1, 1).daysTo(QDate(year, month, day)));
}

/// One bar on each weekday from a Monday on.
BarSeries Weekdays(double monday, int count) {
    BarSeries bars;
    for (int i = 0; i < count; ++i) {
        Bar bar;
        bar.time = monday + i / 5 * 7 + i % 5;
        bars.push_back(bar);
    }
    return bars;
}

PlotRange Over(int bars, double lower = 0) {
    PlotRange range;
    EXPECT_EQ(range.Bars(), std::pair(-1, -1));
    range.SetBarCount(bars);
    range.MoveTo(lower);
    return range;
}

TEST(PlotRangeTest, StaysOverTheBars) {
    PlotRange range = Over(1000);
    range.ShowLatest();
    EXPECT_EQ(range.Bars().second, 999);
    EXPECT_DOUBLE_EQ(range.Width(), PlotRange::kLatestBars);
    range.Scroll(50);
    EXPECT_EQ(range.Bars().second, 999);
    EXPECT_LT(range.Upper(), 999 + 0.5 + 0.03 * range.Width());
    range.Scroll(-5000);
    EXPECT_DOUBLE_EQ(range.Lower(), -0.5);
    EXPECT_EQ(range.Bars().first, 0);
    range.ShowAll();
    EXPECT_EQ(range.Bars(), std::pair(0, 999));
}

TEST(PlotRangeTest, ZoomKeepsTheAnchorAndStopsAtBothEnds) {
    PlotRange range = Over(1000, 400);
    const double place = (450 - range.Lower()) / range.Width();
    range.Zoom(0.5, 450);
    EXPECT_NEAR((450 - range.Lower()) / range.Width(), place, 1e-12);
    range.Zoom(1e-6, 450);
    EXPECT_DOUBLE_EQ(range.Width(), PlotRange::kNarrowest);
    range.Zoom(1e9, 450);
    EXPECT_EQ(range.Bars(), std::pair(0, 999));
    EXPECT_LT(range.Width(), 1030);
}

TEST(PlotRangeTest, FewBarsStandAtTheLeft) {
    PlotRange range = Over(3);
    range.ShowLatest();
    EXPECT_DOUBLE_EQ(range.Lower(), -0.5);
    EXPECT_DOUBLE_EQ(range.Width(), PlotRange::kNarrowest);
    EXPECT_EQ(range.Bars(), std::pair(0, 2));
    range.SetBarCount(0);
    EXPECT_EQ(range.Bars(), std::pair(-1, -1));
}

TEST(PlotRangeTest, ScrollsNoFurtherThanABarNeeds) {
    PlotRange range = Over(1000, 100);
    const double before = range.Lower();
    range.ScrollTo(150);
    EXPECT_DOUBLE_EQ(range.Lower(), before);
    range.ScrollTo(50);
    EXPECT_EQ(range.Bars().first, 50);
    range.ScrollTo(700);
    EXPECT_EQ(range.Bars().second, 700);
}

TEST(PlotRangeTest, TheRoomAfterTheLatestBarIsAShareOfTheView) {
    PlotRange range = Over(1000);
    range.ShowLatest();
    range.SetRoomAfter(0.25);
    EXPECT_DOUBLE_EQ(range.Upper(), 999.5 + 0.25 * range.Width());
    range.SetRoomAfter(2);
    EXPECT_EQ(range.Bars(), std::pair(999, 999));
    range.Zoom(0.001, 999);
    EXPECT_EQ(range.Bars(), std::pair(999, 999));
    range.SetRoomAfter(-1);
    EXPECT_DOUBLE_EQ(range.Upper(), 999.5 + PlotRange::kLeastRoom * range.Width());
    range.MoveTo(100);
    range.SetRoomAfter(0.5);
    EXPECT_EQ(range.Lower(), 100);
    range.ShowAll();
    EXPECT_EQ(range.Lower(), -0.5);
    EXPECT_DOUBLE_EQ(range.Width(), 2000);
    range.SetRoomAfter(0);
    EXPECT_LT(range.Width(), 1030) << "no wider than all bars ask for";
}

TEST(PriceLevelsTest, TheDayBeforeThatOfTheLatestBar) {
    const BarSeries days{{10, 1, 9, 1, 5, 0}, {11, 5, 20, 4, 8, 0}, {14, 8, 30, 2, 9, 0}};
    EXPECT_EQ(PreviousDay(days, 0), (DayPrices{20, 4, 8}));
    EXPECT_FALSE(PreviousDay(days, 1)) << "weeks";
    EXPECT_FALSE(PreviousDay(days, 2)) << "months";
    EXPECT_FALSE(PreviousDay({days[0]}, 0));
    EXPECT_FALSE(PreviousDay({}, 0));
    const BarSeries minutes{{10.5, 1, 99, 1, 5, 0}, {11.4, 5, 20, 4, 8, 0},
                            {11.5, 8, 30, 6, 7, 0}, {11.6, 7, 9, 3, 8.5, 0},
                            {14.4, 9, 50, 1, 2, 0}, {14.5, 2, 60, 1, 3, 0}};
    EXPECT_EQ(PreviousDay(minutes, 3), (DayPrices{30, 3, 8.5}));
    EXPECT_EQ(PreviousDay(minutes, 4), (DayPrices{30, 3, 8.5}));
}

TEST(PriceLevelsTest, LevelsAndTheirTexts) {
    EXPECT_EQ(CdpLevels({20, 4, 8}), (std::array{26.0, 16.0, 10.0, 0.0, -6.0}));
    EXPECT_EQ(SpreadTexts({50, 10, 12, 11, 51}, 5), (std::vector<double>{50, 10, 20, 15, 55}));
    EXPECT_TRUE(SpreadTexts({}, 5).empty());
}

TEST(PlotSliceTest, CoversTheViewWithOneBarMoreAtEachSide) {
    const PlotSlice slice = PlotSlice::Of(99.5, 199.5, 1000, 800);
    EXPECT_EQ(slice.step, 1);
    EXPECT_LE(slice.first, 99);
    EXPECT_GE(slice.end, 201);
    EXPECT_LE(slice.end - slice.first, 105);
    EXPECT_EQ(slice.BodyWidth() % 2, 0);
}

TEST(PlotSliceTest, BucketsKeepTheirBarsWhileTheViewMoves) {
    const auto firstOf = [](double lower) {
        const PlotSlice slice = PlotSlice::Of(lower, lower + 500000, 1000000, 1000);
        EXPECT_EQ(slice.step, 500);
        EXPECT_LE(slice.BucketCount(), 1004);
        int barsSeen = 0;
        int end = slice.first;
        slice.ForEachBucket([&](double key, int from, int to) {
            EXPECT_EQ(from, end);
            EXPECT_LE(from, key);
            EXPECT_LT(key, from + slice.step);
            end = to;
            barsSeen += to - from;
        });
        EXPECT_EQ(barsSeen, slice.end - slice.first);
        return slice.first;
    };
    EXPECT_EQ(firstOf(100000) % 500, 0);
    EXPECT_EQ(firstOf(100123.4) % 500, 0);
}

TEST(PlotMappingTest, ConvertsThereAndBack) {
    const PlotMapping mapping{
        10,
        500,
        99.5,
        199.5,
        {{5, 200, 80, 120}, {205, 100, 0, 1}},
        std::make_shared<const BarSeries>(Weekdays(DayOfDate(2020, 1, 6), 300))};
    EXPECT_DOUBLE_EQ(mapping.PixelsPerBar(), 5);
    EXPECT_DOUBLE_EQ(mapping.XOf(99.5), 10);
    EXPECT_DOUBLE_EQ(mapping.BarAt(mapping.XOf(123.25)), 123.25);
    EXPECT_EQ(mapping.NearestBarAt(mapping.XOf(150) + 2), 150);
    EXPECT_EQ(mapping.NearestBarAt(-100000), 0);
    EXPECT_EQ(mapping.NearestBarAt(100000), 299);
    EXPECT_DOUBLE_EQ(mapping.panes[0].YOf(80), 205);
    EXPECT_DOUBLE_EQ(mapping.panes[0].YOf(120), 5);
    EXPECT_DOUBLE_EQ(mapping.panes[0].ValueAt(mapping.panes[0].YOf(97)), 97);
    EXPECT_EQ(mapping.PaneAt(6), 0);
    EXPECT_EQ(mapping.PaneAt(205), 1);
    EXPECT_EQ(mapping.PaneAt(400), -1);
}

TEST(PlotMappingTest, TimesBetweenAndBeyondTheBars) {
    PlotMapping mapping;
    EXPECT_EQ(mapping.BarOfTime(100), 0);
    EXPECT_EQ(mapping.NearestBarAt(0), -1);
    const double monday = DayOfDate(2020, 1, 6);
    mapping.bars = std::make_shared<const BarSeries>(Weekdays(monday, 10));
    EXPECT_DOUBLE_EQ(mapping.BarOfTime(monday + 7), 5);
    EXPECT_NEAR(mapping.BarOfTime(monday + 5), 4 + 1.0 / 3, 1e-9);  // the Saturday
    EXPECT_DOUBLE_EQ(mapping.BarOfTime(monday - 2), -2);
    EXPECT_DOUBLE_EQ(mapping.BarOfTime(monday + 12), 10);
    for (const double bar : {-3.5, 0.0, 4.0, 4.5, 9.0, 11.0}) {
        EXPECT_NEAR(mapping.BarOfTime(mapping.TimeOfBar(bar)), bar, 1e-9) << bar;
    }
}

std::string TextsOf(const std::vector<TimeLabel>& labels) {
    std::string texts;
    for (const TimeLabel& label : labels) {
        texts += (texts.empty() ? "" : " ") + label.text.toStdString();
    }
    return texts;
}

TEST(TimeLabelTest, DaysWeeksMonthsYearsByTheRoomThereIs) {
    const BarSeries bars = Weekdays(DayOfDate(2018, 1, 1), 3000);
    EXPECT_EQ(TextsOf(MakeTimeLabels(bars, 258, 263, 1)),
              "2018/12/27 12/28 12/31 2019/01/01 01/02 01/03");
    EXPECT_EQ(TextsOf(MakeTimeLabels(bars, 258, 272, 4)), "2018/12/31 2019/01/07 01/14");
    EXPECT_EQ(TextsOf(MakeTimeLabels(bars, 250, 320, 15)), "2019/01 2019/02 2019/03");
    EXPECT_EQ(TextsOf(MakeTimeLabels(bars, 100, 500, 60)),
              "2018/07 2018/10 2019/01 2019/04 2019/07 2019/10");
    EXPECT_EQ(TextsOf(MakeTimeLabels(bars, 10, 1400, 200)), "2019 2020 2021 2022 2023");
    for (const double spacing : {1.0, 3.0, 7.0, 20.0, 55.0, 130.0, 300.0, 900.0}) {
        const auto labels = MakeTimeLabels(bars, 0, 2999, spacing);
        EXPECT_FALSE(labels.empty()) << spacing;
        for (std::size_t i = 1; i < labels.size(); ++i) {
            EXPECT_GE(labels[i].bar - labels[i - 1].bar, spacing);
        }
    }
}

TEST(TimeLabelTest, TheFirstBarOfADayCarriesItsDate) {
    BarSeries bars;
    for (const double day : {DayOfDate(2020, 4, 16), DayOfDate(2020, 4, 17)}) {
        for (int minute = 0; minute < 270; ++minute) {
            Bar bar;
            bar.time = day + (9 * 60 + minute) / 1440.0;
            bars.push_back(bar);
        }
    }
    // 13:00 stands too near before the date.
    EXPECT_EQ(TextsOf(MakeTimeLabels(bars, 150, 400, 40)), "12:00 04/17 10:00 11:00");
    EXPECT_EQ(TextsOf(MakeTimeLabels(bars, 271, 300, 5)), "09:05 09:10 09:15 09:20 09:25 09:30");
    EXPECT_EQ(MakeTimeLabels(bars, 1, 539, 200), (std::vector<TimeLabel>{{270, "2020/04/17"}}));
    EXPECT_TRUE(MakeTimeLabels({}, 0, 10, 5).empty());
    EXPECT_TRUE(MakeTimeLabels(bars, 20, 10, 5).empty());
}

TEST(TimeLabelTest, SecondsOfADay) {
    BarSeries bars(120);
    for (std::size_t i = 0; i < bars.size(); ++i) {
        bars[i].time =
            DayOfDate(2020, 4, 17) + (9 * 3600 + 5 * (static_cast<int>(i) + 1)) / 86400.0;
    }
    EXPECT_EQ(TextsOf(MakeTimeLabels(bars, 0, 5, 2)), "04/17 09:00:20 09:00:30");
    EXPECT_EQ(TextsOf(MakeTimeLabels(bars, 1, 119, 40)), "09:05 09:10");
}

TEST(TimeLabelTest, TimeTexts) {
    const double time = DayOfDate(2020, 4, 17) + (13 * 3600 + 29 * 60 + 59) / 86400.0;
    EXPECT_EQ(TimeText(time, 0), "2020/04/17");
    EXPECT_EQ(TimeText(time, 3), "2020/04/17 13:29");
    EXPECT_EQ(TimeText(time, 4), "2020/04/17 13:29:59");
    EXPECT_EQ(TimeText(DayOfDate(1950, 1, 3), 2), "1950/01/03");
}

TEST(NumberTextTest, PriceDecimals) {
    EXPECT_EQ(NumberText(1234567.125, NumberKind::Price, 1), "1234567.1");
    EXPECT_EQ(NumberText(std::numeric_limits<double>::quiet_NaN(), NumberKind::Price, 2), "–");
}

TEST(NumberTextTest, LargeNumbersInTheUnitsOfTheLanguage) {
    Language language;
    EXPECT_EQ(NumberText(99999, NumberKind::Volume, 2), "99999");
    EXPECT_EQ(NumberText(123456, NumberKind::Volume, 2), "12.35萬");
    EXPECT_EQ(NumberText(931800000, NumberKind::Volume, 2), "9.32億");
    EXPECT_EQ(NumberText(-2.5e12, NumberKind::Plain, 2), "-2.50兆");
    EXPECT_EQ(NumberText(56.789, NumberKind::Plain, 0), "56.79");
    language.Select(Language::English);
    EXPECT_EQ(NumberText(9999, NumberKind::Volume, 2), "9999");
    EXPECT_EQ(NumberText(12345, NumberKind::Volume, 2), "12.35K");
    EXPECT_EQ(NumberText(931800000, NumberKind::Volume, 2), "931.80M");
}

TEST(PlotThemeTest, ColoursStandOutFromEitherBackground) {
    QPalette dark;
    dark.setColor(QPalette::Base, QColor(0x14, 0x17, 0x1c));
    dark.setColor(QPalette::Text, QColor(0xe6, 0xe6, 0xe6));
    QPalette light;
    light.setColor(QPalette::Base, Qt::white);
    light.setColor(QPalette::Text, Qt::black);
    for (const QPalette& palette : {light, dark}) {
        const PlotTheme theme = PlotTheme::FromPalette(palette, true);
        EXPECT_GT(theme.rising.red(), theme.rising.green());
        EXPECT_GT(theme.falling.green(), theme.falling.red());
        for (const std::uint32_t rgb : {0x000000u, 0xffffffu, 0xffff00u, 0x0000a0u}) {
            const int difference =
                std::abs(qGray(theme.Readable(rgb).rgb()) - qGray(theme.background.rgb()));
            EXPECT_GT(difference, 50) << std::hex << rgb;
        }
        const PlotTheme reversed = PlotTheme::FromPalette(palette, false);
        EXPECT_EQ(reversed.rising, theme.falling);
        EXPECT_EQ(reversed.falling, theme.rising);
    }
    EXPECT_EQ(PlotTheme::FromPalette(light, true).Readable(0x1C7ED6), QColor(0x1C, 0x7E, 0xD6));
}

}  // namespace
}  // namespace ta::terminal
