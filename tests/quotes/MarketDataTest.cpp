#include "data/generator/SamplePrices.h"
#include "platform/DayNumber.h"
#include "platform/Text.h"
#include "terminal/lang/Language.h"
#include "terminal/quotes/BarPeriods.h"
#include "terminal/quotes/MarketData.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <string>

namespace ta::terminal {
namespace {

double Day(int year, int month, int day) {
    return static_cast<double>(*DayNumberFromDate({year, month, day}));
}

double Minute(double day, int hour, int minute) {
    return day + (hour * 60 + minute) * 60 / 86400.0;
}

std::vector<CString> Ids(const std::vector<const Symbol*>& symbols) {
    std::vector<CString> ids;
    for (const Symbol* symbol : symbols) {
        ids.push_back(symbol->id);
    }
    return ids;
}

// The shipped data with an empty market of the user's own.
class SampleData : public testing::Test {
protected:
    BarSeries Bars(std::uint8_t market, const CString& id, int period, int count = 0) {
        QString error;
        const auto bars = m_data.LoadBars({market, id, period, count}, &error);
        EXPECT_TRUE(bars) << id << ' ' << error.toStdString();
        return bars ? *bars : BarSeries{};
    }

    static const Bar& At(const BarSeries& bars, double time) {
        static const Bar none;
        const auto found = std::ranges::find(bars, time, &Bar::time);
        EXPECT_NE(found, bars.end()) << time;
        return found == bars.end() ? none : *found;
    }

    Language m_language;
    QTemporaryDir m_userFolder;
    MarketData m_data{TADIALOGS_TEST_DATA_DIR, m_userFolder.path()};
};

TEST_F(SampleData, EverySymbolsPricesAreProper) {
    EXPECT_EQ(m_data.Problems(), QStringList());
    int loaded = 0;
    for (const Market& market : m_data.Markets()) {
        for (const Symbol* symbol : m_data.SymbolsOf(market.id)) {
            for (const int period : {kDaily, kWeekly, kMonthly, kMinutes, kSeconds}) {
                if (!m_data.HasPeriod(market.id, symbol->id, period)) {
                    continue;
                }
                const BarSeries bars = Bars(market.id, symbol->id, period, 1);
                ++loaded;
                EXPECT_FALSE(bars.empty());
                EXPECT_TRUE(std::ranges::is_sorted(bars, std::ranges::less_equal(), &Bar::time));
                for (const Bar& bar : bars) {
                    const double steps = bar.close / symbol->priceStep;
                    ASSERT_NEAR(steps, std::round(steps), 1e-6) << symbol->id;
                }
            }
        }
    }
    EXPECT_EQ(loaded, 26 * 3 + 5 + 3 + 2);
}

TEST_F(SampleData, GeneratorGivesTheShippedFiles) {
    std::set<QString> generated;
    data::GenerateSamplePrices([&generated](const std::string& path, const std::string& text) {
        QFile file(QDir(TADIALOGS_TEST_DATA_DIR).filePath(QString::fromStdString(path)));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path;
        EXPECT_EQ(file.readAll().toStdString(), text) << path;
        generated.insert(file.fileName());
    });
    EXPECT_EQ(generated.size(), 29U);
}

TEST_F(SampleData, WeeksBeginOnMonday) {
    const BarSeries weeks = Bars(2, "SPX", kWeekly);
    EXPECT_EQ(weeks.front(),
              (Bar{Day(2000, 1, 7), 1469.25, 1478, 1377.68, 1441.47,
                   931800000.0 + 1009000000 + 1085500000 + 1092300000 + 1225200000}));
    // Over the end of the year, without the holiday.
    EXPECT_EQ(At(weeks, Day(2009, 1, 2)),
              (Bar{Day(2009, 1, 2), 872.37, 934.73, 857.07, 931.8,
                   3323430000.0 + 3627800000 + 4172940000 + 4048270000}));
    // A week of one day: the exchange stayed closed from Tuesday on.
    EXPECT_EQ(At(weeks, Day(2001, 9, 10)),
              (Bar{Day(2001, 9, 10), 1085.78, 1096.94, 1073.15, 1092.54, 1276600000}));
    for (const Bar& week : weeks) {
        EXPECT_LE(WeekdayFromDayNumber(DayOf(week.time)), 4);
    }
}

TEST_F(SampleData, MonthsAreMadeFromDaysOrReadAsTheyAre) {
    const BarSeries months = Bars(2, "SPX", kMonthly);
    EXPECT_EQ(months.size(), 20 * 12 + 4U);
    const Bar last = months.back();
    EXPECT_EQ(last, (Bar{Day(2020, 4, 17), 2498.08, 2879.22, 2447.49, 2874.56, last.volume}));
    EXPECT_EQ(months[months.size() - 2].time, Day(2020, 3, 31));
    EXPECT_EQ(Bars(2, "GOOG", kMonthly).size(), 68U);
}

TEST_F(SampleData, RefusesWhatThereIsNot) {
    QString error;
    EXPECT_FALSE(m_data.LoadBars({2, "NONE", kDaily, 0}, &error));
    EXPECT_TRUE(error.contains("NONE")) << error.toStdString();
    EXPECT_FALSE(m_data.LoadBars({2, "GOOG", kDaily, 0}, &error));
    EXPECT_TRUE(error.contains("GOOG")) << error.toStdString();
    for (const int period : {kMinutes, kSeconds}) {
        for (const int count : {-1, 0, kLongestBar + 1}) {
            EXPECT_FALSE(m_data.LoadBars({'m', "SXF1", period, count}, nullptr)) << count;
        }
        EXPECT_FALSE(m_data.LoadBars({2, "SPX", period, 5}, nullptr));
    }
    EXPECT_FALSE(m_data.LoadBars({16, "9901", kSeconds, 5}, nullptr)) << "minutes, but no ticks";
    EXPECT_FALSE(m_data.LoadBars({2, "SPX", 9, 0}, nullptr));
}

TEST_F(SampleData, MinutesCountFromTheStartOfTheSession) {
    const BarSeries ones = Bars('m', "SXF1", kMinutes, 1);
    ASSERT_EQ(ones.size(), 6000U);
    const double day = Day(2020, 3, 23);
    EXPECT_EQ(ones.front().time, Minute(day, 8, 46));

    // 300 minutes in 43 bars of 7: the last has the 6 that are left, and the next day starts anew.
    const BarSeries sevens = Bars('m', "SXF1", kMinutes, 7);
    ASSERT_EQ(sevens.size(), 43 * 20U);
    EXPECT_EQ(sevens[42].time, Minute(day, 13, 45));
    EXPECT_EQ(sevens[42].open, ones[294].open);
    EXPECT_EQ(sevens[43].time, Minute(day + 1, 8, 52));
    EXPECT_EQ(Bars('m', "SXF1", kMinutes, 999).size(), 20U);

    EXPECT_EQ(DailyBars(ones).front(), At(Bars('m', "SXF1", kDaily), day));
}

// Ticks of the last day, said in the names, that agree with the minute and the daily prices.
TEST_F(SampleData, TicksAgreeWithWhatIsMadeOfThem) {
    std::vector<CString> withTicks;
    for (const Symbol* symbol : m_data.Search({}, 100)) {
        const bool named = symbol->chineseName.find(text::FromUtf8("模擬逐筆")) != CString::npos &&
                           symbol->englishName.find("simulated ticks") != CString::npos;
        EXPECT_EQ(named, symbol->hasTicks) << symbol->id;
        if (symbol->hasTicks) {
            withTicks.push_back(symbol->id);
            const BarSeries ticks = Bars(symbol->market, symbol->id, kSeconds, 1);
            EXPECT_EQ(DailyBars(ticks).back(), Bars(symbol->market, symbol->id, kDaily).back());
        }
    }
    EXPECT_EQ(withTicks, (std::vector<CString>{"9902", "SXF1"}));
    const BarSeries minutes = Bars('m', "SXF1", kMinutes, 1);
    EXPECT_EQ(BarSeries(minutes.end() - 300, minutes.end()), Bars('m', "SXF1", kSeconds, 60));
    // A symbol without a file of minute prices.
    const BarSeries fives = Bars(16, "9902", kMinutes, 5);
    EXPECT_EQ(fives, MinuteBars(Bars(16, "9902", kSeconds, 60), 5));
    EXPECT_EQ(fives.size(), 54U);
    EXPECT_EQ(fives.back().time, Minute(Day(2020, 4, 17), 13, 30));
}

// Two days from 9:00 to 13:30 with a trade at the very begin and at the very end, gaps, and a
// session that both share. The third one has its last trade at the end of its day.
TEST(BarPeriods, SecondsCountFromTheStartOfTheSession) {
    BarSeries ticks;
    const auto add = [&ticks](int day, int hour, int minute, int second) {
        const double price = static_cast<double>(ticks.size() + 1);
        ticks.push_back(
            {Minute(day, hour, minute) + second / 86400.0, price, price, price, price, 1});
    };
    for (const int second : {0, 3, 10, 11}) {
        add(100, 9, 0, second);
    }
    add(100, 9, 7, 0);
    add(100, 13, 29, 58);
    add(101, 9, 0, 5);
    add(101, 13, 30, 0);
    const auto told = [&ticks](int seconds) {
        std::string text;
        for (const Bar& bar : SecondBars(ticks, seconds)) {
            const int time = SecondsOfDay(bar.time);
            text += fmt::format("{} {}:{:02}:{:02} {}-{}\n", DayOf(bar.time), time / 3600,
                                time / 60 % 60, time % 60, bar.open, bar.close);
        }
        return text;
    };
    const std::map<int, const char*> cases{
        {1,
         "100 9:00:01 1-1\n100 9:00:03 2-2\n100 9:00:10 3-3\n100 9:00:11 4-4\n"
         "100 9:07:00 5-5\n100 13:29:58 6-6\n101 9:00:05 7-7\n101 13:30:00 8-8\n"},
        {7,
         "100 9:00:07 1-2\n100 9:00:14 3-4\n100 9:07:00 5-5\n100 13:29:58 6-6\n"
         "101 9:00:07 7-7\n101 13:30:00 8-8\n"},
        {10,
         "100 9:00:10 1-3\n100 9:00:20 4-4\n100 9:07:00 5-5\n100 13:30:00 6-6\n"
         "101 9:00:10 7-7\n101 13:30:00 8-8\n"},
        {60,
         "100 9:01:00 1-4\n100 9:07:00 5-5\n100 13:30:00 6-6\n101 9:01:00 7-7\n"
         "101 13:30:00 8-8\n"},
        {999, "100 9:16:39 1-5\n100 13:30:00 6-6\n101 9:16:39 7-7\n101 13:30:00 8-8\n"}};
    for (const auto& [seconds, expected] : cases) {
        EXPECT_EQ(told(seconds), expected) << seconds;
    }
    EXPECT_EQ(SecondBars(ticks, 10)[0].high, 3);
    EXPECT_EQ(SecondBars(ticks, 10)[0].volume, 3);
    ticks.clear();
    add(100, 23, 59, 59);
    EXPECT_EQ(told(999), "100 23:59:59 1-1\n") << "never the next day";
    EXPECT_TRUE(SecondBars({}, 5).empty());
}

TEST(BarPeriods, GapsInASessionKeepTheSlots) {
    const BarSeries bars{{Minute(100, 9, 1), 1, 1, 1, 1, 1},  {Minute(100, 9, 4), 2, 2, 2, 2, 1},
                         {Minute(100, 9, 13), 3, 3, 3, 3, 1}, {Minute(101, 9, 7), 4, 4, 4, 4, 1},
                         {Minute(101, 9, 10), 5, 5, 5, 5, 1}, {Minute(101, 9, 11), 6, 6, 6, 6, 1}};
    const BarSeries fives = MinuteBars(bars, 5);
    ASSERT_EQ(fives.size(), 4U);
    EXPECT_EQ(fives[0], (Bar{Minute(100, 9, 4), 1, 2, 1, 2, 2}));
    EXPECT_EQ(fives[1].time, Minute(100, 9, 13));
    EXPECT_EQ(fives[2].time, Minute(101, 9, 10));
    EXPECT_EQ(fives[3].time, Minute(101, 9, 11));
}

TEST_F(SampleData, SearchFindsIdsThenNames) {
    const auto found = [this](const char* typed, std::size_t most = 100) {
        return Ids(m_data.Search(text::FromUtf8(typed), most));
    };
    EXPECT_EQ(found(" goo "), std::vector<CString>{"GOOG"});
    // The symbol of that very id, ids that begin with it, then names with it.
    EXPECT_EQ(found("etxo1w-450c").front(), "ETXO1W-450C");
    EXPECT_EQ(found("SXF", 2), (std::vector<CString>{"SXF1", "SXF2"}));
    EXPECT_EQ(found("蘋"), std::vector<CString>{"AAPL"});
    EXPECT_EQ(found("simulated INDEX futures").size(), 3U);
    EXPECT_EQ(found("").size(), 31U);
}

// The second byte of 買 is the letter "R", which the English name does not have.
TEST_F(SampleData, SearchNeverMatchesHalfACharacter) {
    ASSERT_NE(m_data.FindSymbol('m', "SXO10500C")->chineseName.find('R'), CString::npos);
    const std::vector<CString> found = Ids(m_data.Search("r", 100));
    EXPECT_EQ(std::ranges::count(found, "SXO10500C"), 0);
    EXPECT_EQ(std::ranges::count(found, "OBD1"), 1);  // "overseas"
    EXPECT_EQ(Ids(m_data.Search(text::FromUtf8("週買權 10500"), 100)),
              std::vector<CString>{"SXOW5-10500C"});
}

// A small data folder that a test breaks.
class BrokenCatalogue : public testing::Test {
protected:
    BrokenCatalogue() {
        Write("markets.csv", "id,chinese,english\n2,甲,A\nm,乙,B\n");
        Write("commodities.csv", "market,id,chinese,english\nm,FX,丙,C\n");
        Write("contracts.csv", "market,commodity,month,weekly\nm,FX,202005,\n");
        Write("symbols.csv",
              "market,id,chinese,english,commodity,month,step,prices\n"
              "2,ONE,一,One,,,0.01,daily\nm,FX1,二,Two,FX,202005,1,daily\n");
    }

    void Write(const char* name, const QByteArray& text) {
        const QString path = QDir(m_folder.path()).filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    QStringList Problems() { return MarketData(m_folder.path(), m_user.path()).Problems(); }

    // The one problem there is names the file, the line and `about`.
    void ExpectProblem(const char* file, int line, const char* about) {
        const QStringList problems = Problems();
        ASSERT_EQ(problems.size(), 1) << about << problems.join('\n').toStdString();
        const QString place = QString("%1, line %2:").arg(file).arg(line);
        EXPECT_TRUE(problems[0].contains(place)) << problems[0].toStdString();
        EXPECT_TRUE(problems[0].contains(about)) << problems[0].toStdString();
    }

    Language m_language;
    QTemporaryDir m_folder;
    QTemporaryDir m_user;
};

TEST_F(BrokenCatalogue, TellsFileLineAndReason) {
    m_language.Select(Language::English);
    ASSERT_EQ(Problems(), QStringList());
    const QByteArray heading = "market,id,chinese,english,commodity,month,step,prices\n";
    const QByteArray good = "2,ONE,一,One,,,0.01,daily\n";
    const std::vector<std::pair<QByteArray, const char*>> lines{
        {"3,X,三,Three,,,1,daily", "market: 3"},
        {"2,../X,三,Three,,,1,daily", "id: ../X"},
        {"2,ONE,三,Three,,,1,daily", "before: ONE"},
        {"2,X,,Three,,,1,daily", "name"},
        {"2,X,三,Three,FX,,1,daily", "commodity: FX"},
        {"m,X,三,Three,,,1,daily", "commodity"},
        {"m,X,三,Three,FX,202006,1,daily", "month: 202006"},
        {"2,X,三,Three,,,0,daily", "step: 0"},
        {"2,X,三,Three,,,1,hourly", "hourly"},
        {"2,X,三,Three,,,1", "7"},
        {"2,\"X,三,Three,,,1,daily", "quote"}};
    for (const auto& [line, about] : lines) {
        Write("symbols.csv", heading + good + '\n' + line + "\r\n");
        ExpectProblem("symbols.csv", 4, about);
        EXPECT_EQ(MarketData(m_folder.path(), m_user.path()).SymbolsOf(2).size(), 1U);
    }
    Write("symbols.csv", "");
    ExpectProblem("symbols.csv", 1, "market,id,chinese");
    Write("symbols.csv", heading + good);
    Write("contracts.csv", "market,commodity,month,weekly\nm,FY,202005,\n");
    ExpectProblem("contracts.csv", 2, "FY");
    Write("contracts.csv", "market,commodity,month,weekly\n");
    Write("markets.csv", "id,chinese,english\n2,甲,A\nm,乙,B\nU,丁,D\n300,丁,D\n2,丁,D\n");
    EXPECT_EQ(Problems().size(), 3);
}

TEST_F(BrokenCatalogue, TellsMissingFilesAndFolders) {
    QFile::remove(m_folder.filePath("contracts.csv"));
    const QStringList problems = Problems();
    // The contract's symbol has lost its month.
    ASSERT_EQ(problems.size(), 2);
    EXPECT_TRUE(problems[0].contains("contracts.csv"));

    MarketData none(m_folder.filePath("none"), m_user.path());
    ASSERT_EQ(none.Problems().size(), 1);
    EXPECT_TRUE(none.Problems()[0].contains("none"));
    EXPECT_EQ(none.Markets().size(), 1U);
}

TEST_F(BrokenCatalogue, TicksAloneMakeEveryPeriod) {
    Write("symbols.csv",
          "market,id,chinese,english,commodity,month,step,prices\n2,ONE,一,One,,,0.01,tick\n");
    Write("prices/2/ONE.tick.csv",
          "date,open,high,low,close,volume\n2020-04-16 09:00:00,1,1,1,1,1\n"
          "2020-04-16 09:00:40,3,3,3,3,2\n2020-04-17 09:01:30,2,2,2,2,4\n");
    const MarketData data(m_folder.path(), m_user.path());
    const auto sizeOf = [&data](int period, int count) {
        EXPECT_TRUE(data.HasPeriod(2, "ONE", period));
        const auto bars = data.LoadBars({2, "ONE", period, count}, nullptr);
        return bars ? bars->size() : 0;
    };
    EXPECT_EQ(sizeOf(kSeconds, 30), 3U);
    EXPECT_EQ(sizeOf(kMinutes, 5), 2U);
    EXPECT_EQ(sizeOf(kDaily, 0), 2U);
    EXPECT_EQ(sizeOf(kWeekly, 0), 1U);
    EXPECT_EQ(sizeOf(kMonthly, 0), 1U);
}

TEST_F(BrokenCatalogue, TellsBadPriceFiles) {
    m_language.Select(Language::English);
    const MarketData data(m_folder.path(), m_user.path());
    QString error;
    EXPECT_FALSE(data.LoadBars({2, "ONE", kDaily, 0}, &error));
    EXPECT_TRUE(error.contains("prices/2/ONE.daily.csv")) << error.toStdString();
    Write("prices/2/ONE.daily.csv",
          "date,open,high,low,close,volume\n2020-04-16,1,1,1,1,1\n2020-04-17,1,0,1,1,1\n");
    EXPECT_FALSE(data.LoadBars({2, "ONE", kDaily, 0}, &error));
    EXPECT_TRUE(error.contains("ONE.daily.csv, line 3: the high is below the low"))
        << error.toStdString();
    Write("prices/2/ONE.daily.csv", "date,open,high,low,close,volume\n2020-04-16,1,1,1,1,1\n");
    EXPECT_TRUE(data.LoadBars({2, "ONE", kDaily, 0}, &error));
}

}  // namespace
}  // namespace ta::terminal
