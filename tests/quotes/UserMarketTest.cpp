#include "platform/DayNumber.h"
#include "platform/Text.h"
#include "terminal/lang/Language.h"
#include "terminal/quotes/MarketData.h"
#include "tests/support/SmallFilesOnly.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <SQLiteCpp/Database.h>

#include <cstring>
#include <limits>
#include <string>

namespace ta::terminal {
namespace {

const double kDay = static_cast<double>(*DayNumberFromDate({2020, 4, 15}));

BarSeries DailySeries(int count) {
    BarSeries bars;
    for (int i = 0; i < count; ++i) {
        bars.push_back({kDay + i, 10.0 + i, 12.0 + i, 9.0 + i, 11.0 + i, 100.0 * i});
    }
    return bars;
}

class UserFiles : public testing::Test {
protected:
    QString Path(const QString& name = "market.db") const { return QDir(m_folder).filePath(name); }

    QByteArray Read(const QString& name = "market.db") const {
        QFile file(Path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }
    void Write(const QString& name, const QByteArray& bytes) const {
        QDir().mkpath(m_folder);
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QStringList Files(const QString& pattern) const {
        return QDir(m_folder).entryList({pattern}, QDir::Files, QDir::Name);
    }
    // Changes the file past the market.
    void RunSql(const std::string& sql) const {
        SQLite::Database(Path().toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE)
            .exec(sql);
    }
    // The ids that a program finds which starts now, with blanks between them.
    std::string Stored() const {
        const UserMarket market(m_folder);
        std::string ids;
        for (const Symbol* symbol : market.Symbols()) {
            ids += (ids.empty() ? "" : " ") + symbol->id;
        }
        return ids;
    }
    // The one thing that a program tells which starts now.
    std::string Problem() const {
        const QStringList problems = UserMarket(m_folder).Problems();
        EXPECT_EQ(problems.size(), 1) << problems.join('\n').toStdString();
        return problems.join('\n').toStdString();
    }

    CString Add(UserMarket* market, const QString& fileName,
                const BarSeries& bars = DailySeries(3)) {
        QString error;
        const Symbol* symbol = market->Add(fileName, bars, 0.05, &error);
        EXPECT_NE(symbol, nullptr) << error.toStdString();
        return symbol == nullptr ? CString() : symbol->id;
    }

    Language m_language;
    QTemporaryDir m_parent;
    QString m_folder = m_parent.filePath("data/my-files");
};

TEST_F(UserFiles, AnImportedFileIsThereInTheNextRun) {
    {
        UserMarket market(m_folder);
        EXPECT_TRUE(market.Problems().isEmpty());
        EXPECT_FALSE(QDir(m_folder).exists());
        EXPECT_EQ(Add(&market, "/files/台積電, \"2330\" daily.csv"), "2330_DAILY");
    }
    const MarketData data(TADIALOGS_TEST_DATA_DIR, m_folder);
    EXPECT_TRUE(data.Problems().isEmpty());
    const Symbol* symbol = data.FindSymbol(kUserMarket, "2330_DAILY");
    ASSERT_NE(symbol, nullptr);
    EXPECT_EQ(NameOf(*symbol), text::FromUtf8("台積電, \"2330\" daily"));
    EXPECT_EQ(symbol->priceStep, 0.05);
    EXPECT_EQ(data.Search(text::FromUtf8("台積"), 5), std::vector<const Symbol*>{symbol});
    QString error;
    const auto bars = data.LoadBars({kUserMarket, "2330_DAILY", kDaily, 0}, &error);
    ASSERT_TRUE(bars) << error.toStdString();
    EXPECT_EQ(*bars, DailySeries(3));
    EXPECT_EQ(data.LoadBars({kUserMarket, "2330_DAILY", kWeekly, 0}, &error)->size(), 1U);
}

TEST_F(UserFiles, IdsAreSafeAndUnique) {
    UserMarket market(m_folder);
    EXPECT_EQ(Add(&market, "aapl.csv"), "AAPL");
    EXPECT_EQ(Add(&market, "/other/AAPL.txt"), "AAPL-2");
    EXPECT_EQ(Add(&market, "../..\\a$a|p:l.csv"), "AAPL-3");
    EXPECT_EQ(Add(&market, "蘋果.csv"), "FILE");
    EXPECT_EQ(Add(&market, "-.csv"), "FILE-2");
    EXPECT_EQ(Add(&market, QString(300, 'x') + ".csv"), CString(20, 'X'));
    for (const Symbol* symbol : market.Symbols()) {
        EXPECT_TRUE(IsSymbolId(symbol->id)) << symbol->id;
    }
}

TEST_F(UserFiles, TheKindOfPricesIsSeenFromTheTimes) {
    MarketData data(TADIALOGS_TEST_DATA_DIR, m_folder);
    BarSeries minutes{{kDay + 0.375, 1, 1, 1, 1, 1},
                      {kDay + 0.3875, 2, 2, 2, 2, 1},
                      {kDay + 1.375, 3, 3, 3, 3, 1}};
    BarSeries ticks = minutes;
    ticks[1].time = kDay + 0.376;
    BarSeries months{{kDay, 1, 1, 1, 1, 1}, {kDay + 30, 2, 2, 2, 2, 1}};
    Add(&data.User(), "minutes.csv", minutes);
    Add(&data.User(), "ticks.csv", ticks);
    Add(&data.User(), "months.csv", months);
    Add(&data.User(), "single.csv", DailySeries(1));
    EXPECT_TRUE(data.HasPeriod('U', "MINUTES", kMinutes));
    EXPECT_FALSE(data.HasPeriod('U', "MINUTES", kSeconds));
    const MarketData again(TADIALOGS_TEST_DATA_DIR, m_folder);
    ASSERT_TRUE(again.HasPeriod('U', "TICKS", kMinutes) && again.HasPeriod('U', "TICKS", kSeconds));
    EXPECT_EQ(again.LoadBars({'U', "TICKS", kSeconds, 999}, nullptr)->size(), 2U);
    const auto daily = data.LoadBars({'U', "MINUTES", kDaily, 0}, nullptr);
    ASSERT_TRUE(daily);
    EXPECT_EQ(*daily, (BarSeries{{kDay, 1, 2, 1, 2, 2}, {kDay + 1, 3, 3, 3, 3, 1}}));
    EXPECT_FALSE(data.HasPeriod('U', "MONTHS", kDaily));
    EXPECT_EQ(data.LoadBars({'U', "MONTHS", kMonthly, 0}, nullptr)->size(), 2U);
    EXPECT_TRUE(data.HasPeriod('U', "SINGLE", kDaily));
}

TEST_F(UserFiles, RemoveTakesSymbolAndBars) {
    UserMarket market(m_folder);
    Add(&market, "one.csv");
    Add(&market, "two.csv");
    const Symbol one = *market.Find("ONE");
    const Symbol* two = market.Find("TWO");
    QString error;
    EXPECT_TRUE(market.Remove("ONE", &error));
    EXPECT_EQ(market.Find("ONE"), nullptr);
    EXPECT_EQ(market.Find("TWO"), two);
    EXPECT_EQ(*market.Load(*two, &error), DailySeries(3));
    EXPECT_FALSE(market.Load(one, &error));
    EXPECT_FALSE(market.Remove("ONE", &error));
    EXPECT_TRUE(error.contains("ONE"));
    EXPECT_EQ(Add(&market, "one.csv", DailySeries(2)), "ONE");
    EXPECT_EQ(*market.Load(*market.Find("ONE"), &error), DailySeries(2));
    EXPECT_EQ(Stored(), "TWO ONE");
}

TEST_F(UserFiles, TwoProgramsShareTheFolder) {
    UserMarket first(m_folder);
    UserMarket second(m_folder);
    Add(&first, "one.csv");
    const Symbol* one = first.Find("ONE");
    Add(&second, "one.csv");
    Add(&first, "three.csv");
    EXPECT_EQ(first.Symbols().size(), 3U);
    EXPECT_EQ(first.Find("ONE"), one);
    EXPECT_EQ(second.Symbols().size(), 2U);
    second.Reload();
    EXPECT_EQ(second.Symbols().size(), 3U);
    EXPECT_EQ(Stored(), "ONE ONE-2 THREE");
}

TEST_F(UserFiles, AFileThatIsNoMarketIsToldAndKept) {
    {
        UserMarket market(m_folder);
        Add(&market, "one.csv");
    }
    const QByteArray whole = Read();
    std::vector<QByteArray> files{"garbage", QByteArray(9000, 'g'), whole.chopped(20)};
    for (const char* sql : {"CREATE TABLE symbols(id)", "PRAGMA application_id = 5",
                            "PRAGMA application_id = 1415670123; PRAGMA user_version = 1; "
                            "CREATE TABLE other(id)"}) {
        QFile::remove(Path());
        RunSql(sql);
        files.push_back(Read());
    }
    int kept = 0;
    for (const QByteArray& bytes : files) {
        SCOPED_TRACE(kept);
        Write("market.db", bytes);
        UserMarket market(m_folder);
        EXPECT_NE(Problem().find("market.db"), std::string::npos);
        EXPECT_TRUE(market.Symbols().empty());
        EXPECT_EQ(Read(), bytes);
        EXPECT_EQ(Add(&market, "new.csv"), "NEW");
        const QStringList aside = Files("market.db.damaged-*");
        ASSERT_EQ(aside.size(), ++kept);
        int found = 0;
        for (const QString& name : aside) {
            found += Read(name) == bytes ? 1 : 0;
        }
        EXPECT_EQ(found, 1);
        EXPECT_EQ(Stored(), "NEW");
    }
}

TEST_F(UserFiles, AMarketOfANewerVersionIsToldAndNotWritten) {
    UserMarket market(m_folder);
    Add(&market, "one.csv");
    RunSql("PRAGMA user_version = 2; ALTER TABLE bars RENAME TO things");
    const QByteArray before = Read();
    m_language.Select(Language::English);
    EXPECT_NE(Problem().find("newer"), std::string::npos);
    QString error;
    EXPECT_EQ(market.Add("two.csv", DailySeries(1), 1, &error), nullptr);
    EXPECT_TRUE(error.contains("newer")) << error.toStdString();
    EXPECT_EQ(Read(), before);
    EXPECT_EQ(market.Symbols().size(), 1U);
}

// The last page of the table is ruined: its bars go, the others come along into the new file.
TEST_F(UserFiles, WhatCanStillBeReadSurvivesADamage) {
    UserMarket market(m_folder);
    Add(&market, "one.csv", DailySeries(500));
    Add(&market, "two.csv", DailySeries(500));
    QByteArray bytes = Read();
    bytes.replace(bytes.size() - 4096, 4096, QByteArray(4096, 'g'));
    Write("market.db", bytes);
    QString error;
    EXPECT_FALSE(market.Load(*market.Find("TWO"), &error));
    EXPECT_TRUE(error.contains("market.db")) << error.toStdString();
    EXPECT_EQ(market.Load(*market.Find("ONE"), &error)->size(), 500U);
    EXPECT_EQ(Add(&market, "three.csv"), "THREE");
    EXPECT_EQ(Read(Files("market.db.damaged-*").value(0)), bytes);
    EXPECT_EQ(Stored(), "ONE THREE");
    Write("market.db", bytes);
    market.Reload();
    EXPECT_FALSE(market.Remove(market.Find("TWO")->id, &error));  // gone with the damage
    EXPECT_TRUE(error.contains("TWO")) << error.toStdString();
    EXPECT_EQ(Stored(), "ONE");
    EXPECT_EQ(*market.Load(*market.Find("ONE"), &error), DailySeries(500));
}

TEST_F(UserFiles, BarsThatMakeNoSenseAreRefused) {
    UserMarket market(m_folder);
    Add(&market, "one.csv");
    QString error;
    for (const char* bars : {"open = 500", "close = 0", "high = 9e999", "volume = 9e999"}) {
        RunSql("UPDATE bars SET " + std::string(bars) + " WHERE close = 12");
        EXPECT_FALSE(market.Load(*market.Find("ONE"), &error)) << bars;
        EXPECT_TRUE(error.contains("market.db"));
        market.Remove("ONE", &error);
        Add(&market, "one.csv");
    }
    BarSeries broken = DailySeries(3);
    broken[1].open = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(market.Add("nan.csv", broken, 1, &error), nullptr);
    broken[1] = broken[0];
    EXPECT_EQ(market.Add("twice.csv", broken, 1, &error), nullptr);
    EXPECT_EQ(Stored(), "ONE");
}

TEST_F(UserFiles, AFullDiskOrABlockedFolderChangesNothing) {
    UserMarket market(m_folder);
    Add(&market, "first.csv");
    const QByteArray before = Read();
    QString error;
    EXPECT_EQ(market.Add("none.csv", {}, 1, &error), nullptr);
    Write("blocked", "");
    UserMarket blocked(Path("blocked/my-files"));
    EXPECT_EQ(blocked.Add("one.csv", DailySeries(1), 1, &error), nullptr);
    EXPECT_TRUE(error.contains("blocked")) << error.toStdString();
    EXPECT_TRUE(blocked.Symbols().empty());
    for (const int bars : {1, 1000}) {
        const test::SmallFilesOnly limit(static_cast<rlim_t>(before.size()));
        error.clear();
        EXPECT_EQ(market.Add("one.csv", DailySeries(bars), 1, &error), nullptr) << bars;
        EXPECT_TRUE(error.contains("market.db")) << error.toStdString();
        EXPECT_FALSE(market.Remove("FIRST", &error));
    }
    EXPECT_EQ(Read(), before);
    EXPECT_EQ(market.Symbols().size(), 1U);
    EXPECT_EQ(Add(&market, "one.csv"), "ONE");
    EXPECT_EQ(Stored(), "FIRST ONE");
}

// The folder of an earlier version, byte for byte.
class EarlierFiles : public UserFiles {
protected:
    static QByteArray BarsFile(const BarSeries& bars) {
        QByteArray bytes("TABARS1\n\4\3\2\1\60\0\0\0", 16);
        const std::uint64_t count = bars.size();
        bytes.append(reinterpret_cast<const char*>(&count), sizeof count);
        for (const Bar& bar : bars) {
            const double numbers[] = {bar.time, bar.open, bar.high, bar.low, bar.close, bar.volume};
            bytes.append(reinterpret_cast<const char*>(numbers), sizeof numbers);
        }
        return bytes;
    }
    EarlierFiles() {
        Write("index.csv",
              "id,name,prices,step\nONE,\"台積電, \"\"2330\"\"\",daily,0.05\nTWO,two,minute,1\n");
        Write("ONE.bars", BarsFile(DailySeries(3)));
        Write("TWO.bars", BarsFile(DailySeries(2)));
    }
};

TEST_F(EarlierFiles, AreTakenOverOnce) {
    MarketData data(TADIALOGS_TEST_DATA_DIR, m_folder);
    EXPECT_EQ(data.Problems(), QStringList());
    const Symbol* one = data.FindSymbol('U', "ONE");
    ASSERT_NE(one, nullptr);
    EXPECT_EQ(NameOf(*one), text::FromUtf8("台積電, \"2330\""));
    EXPECT_EQ(one->priceStep, 0.05);
    EXPECT_EQ(*data.LoadBars({'U', "ONE", kDaily, 0}, nullptr), DailySeries(3));
    EXPECT_TRUE(data.HasPeriod('U', "TWO", kMinutes));
    EXPECT_EQ(Files("index.csv*").size(), 1);
    EXPECT_TRUE(Files("index.csv*")[0].startsWith("index.csv.imported-"));
    EXPECT_EQ(Read("ONE.bars"), BarsFile(DailySeries(3)));
    QString error;
    EXPECT_TRUE(data.User().Remove("ONE", &error));
    EXPECT_EQ(Stored(), "TWO");
}

TEST_F(EarlierFiles, WaitUntilTheyCanBeTakenOver) {
    QDir().mkpath(Path());  // a folder in the file's place
    EXPECT_EQ(UserMarket(m_folder).Problems().size(), 2);
    EXPECT_EQ(Files("index.csv*"), QStringList("index.csv"));
    QDir().rmdir(Path());
    const QByteArray index = Read("index.csv");
    QFile::remove(Path("index.csv"));
    QDir().mkpath(Path("index.csv"));  // not to be read
    EXPECT_NE(Problem().find("index.csv"), std::string::npos);
    EXPECT_TRUE(QDir().rmdir(Path("index.csv")));
    Write("index.csv", index);
    EXPECT_EQ(Stored(), "ONE TWO");
    // Run again, the earlier version has made new ones: what is here stays.
    Write("index.csv", "id,name,prices,step\nONE,x,daily,1\nTHREE,x,daily,1\n");
    Write("ONE.bars", BarsFile(DailySeries(1)));
    Write("THREE.bars", BarsFile(DailySeries(1)));
    UserMarket market(m_folder);
    EXPECT_EQ(Stored(), "ONE TWO THREE");
    EXPECT_EQ(market.Load(*market.Find("ONE"), nullptr)->size(), 3U);
    EXPECT_EQ(Files("index.csv.imported-*").size(), 2);
}

TEST_F(EarlierFiles, WhatCannotBeReadIsToldAndKept) {
    const QByteArray index = Read("index.csv") +
                             "../EVIL,x,daily,1\nTHREE,x,daily,-1\nFOUR,x,hourly,1\nFIVE,x,daily\n"
                             "SHORT,x,daily,1\nLONG,x,daily,1\nRANDOM,x,daily,1\nEMPTY,x,daily,1\n"
                             "UNSORTED,x,daily,1\nGONE,x,daily,1\nNONE,x,daily,1\nLAST,x,daily,1\n";
    Write("index.csv", index);
    const QByteArray good = BarsFile(DailySeries(3));
    BarSeries unsorted = DailySeries(3);
    std::swap(unsorted[0], unsorted[1]);
    const std::vector<std::pair<QString, QByteArray>> files{
        {"SHORT.bars", good.chopped(20)},         {"LONG.bars", good + QByteArray(48, '\0')},
        {"RANDOM.bars", QByteArray(500, '\x5A')}, {"EMPTY.bars", ""},
        {"UNSORTED.bars", BarsFile(unsorted)},    {"NONE.bars", BarsFile({})},
        {"LAST.bars", BarsFile(DailySeries(1))}};
    for (const auto& [name, bytes] : files) {
        Write(name, bytes);
    }
    const QStringList problems = UserMarket(m_folder).Problems();
    ASSERT_EQ(problems.size(), 11);
    const char* const told[] = {"4",      "5",     "6",        "7",    "SHORT", "LONG",
                                "RANDOM", "EMPTY", "UNSORTED", "GONE", "NONE"};
    for (int i = 0; i < 11; ++i) {
        EXPECT_TRUE(problems[i].contains(told[i])) << problems[i].toStdString();
    }
    EXPECT_EQ(Stored(), "ONE TWO LAST");
    EXPECT_EQ(Read(Files("index.csv.imported-*").value(0)), index);
    for (const auto& [name, bytes] : files) {
        EXPECT_EQ(Read(name), bytes) << name.toStdString();
    }
}

}  // namespace
}  // namespace ta::terminal
