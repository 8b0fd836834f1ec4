#include "platform/DayNumber.h"
#include "platform/Text.h"
#include "terminal/lang/Language.h"
#include "terminal/quotes/MarketData.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/resource.h>

#include <csignal>
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
    QString Path(const char* name) const { return QDir(m_folder).filePath(name); }

    QByteArray Read(const char* name) const {
        QFile file(Path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        return file.readAll();
    }

    void Write(const char* name, const QByteArray& bytes) const {
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
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
    const Symbol* symbol = data.FindSymbol(UserMarket::kId, "2330_DAILY");
    ASSERT_NE(symbol, nullptr);
    EXPECT_EQ(NameOf(*symbol), text::FromUtf8("台積電, \"2330\" daily"));
    EXPECT_EQ(symbol->priceStep, 0.05);
    EXPECT_EQ(data.Search(text::FromUtf8("台積"), 5), std::vector<const Symbol*>{symbol});
    QString error;
    const auto bars = data.LoadBars({UserMarket::kId, "2330_DAILY", kDaily, 0}, &error);
    ASSERT_TRUE(bars) << error.toStdString();
    EXPECT_EQ(*bars, DailySeries(3));
    EXPECT_EQ(data.LoadBars({UserMarket::kId, "2330_DAILY", kWeekly, 0}, &error)->size(), 1U);
}

TEST_F(UserFiles, IdsAreSafeAndUnique) {
    UserMarket market(m_folder);
    EXPECT_EQ(Add(&market, "aapl.csv"), "AAPL");
    EXPECT_EQ(Add(&market, "/other/AAPL.txt"), "AAPL-2");
    EXPECT_EQ(Add(&market, "../..\\a$a|p:l.csv"), "AAPL-3");
    EXPECT_EQ(Add(&market, "蘋果.csv"), "FILE");
    EXPECT_EQ(Add(&market, "-.csv"), "FILE-2");
    EXPECT_EQ(Add(&market, QString(300, 'x') + ".csv"), CString(20, 'X'));
    // A bar file that no index names belongs to somebody, too.
    Write("LOST.bars", "precious");
    EXPECT_EQ(Add(&market, "lost.csv"), "LOST-2");
    EXPECT_EQ(Read("LOST.bars"), "precious");
    for (const Symbol* symbol : market.Symbols()) {
        EXPECT_TRUE(IsSymbolId(symbol->id)) << symbol->id;
    }
}

TEST_F(UserFiles, TheKindOfPricesIsSeenFromTheTimes) {
    MarketData data(TADIALOGS_TEST_DATA_DIR, m_folder);
    BarSeries minutes{{kDay + 0.375, 1, 1, 1, 1, 1},
                      {kDay + 0.376, 2, 2, 2, 2, 1},
                      {kDay + 1.375, 3, 3, 3, 3, 1}};
    BarSeries months{{kDay, 1, 1, 1, 1, 1}, {kDay + 30, 2, 2, 2, 2, 1}};
    Add(&data.User(), "minutes.csv", minutes);
    Add(&data.User(), "months.csv", months);
    Add(&data.User(), "single.csv", DailySeries(1));
    EXPECT_TRUE(data.HasPeriod('U', "MINUTES", kMinutes));
    const auto daily = data.LoadBars({'U', "MINUTES", kDaily, 0}, nullptr);
    ASSERT_TRUE(daily);
    EXPECT_EQ(*daily, (BarSeries{{kDay, 1, 2, 1, 2, 2}, {kDay + 1, 3, 3, 3, 3, 1}}));
    EXPECT_FALSE(data.HasPeriod('U', "MONTHS", kDaily));
    EXPECT_EQ(data.LoadBars({'U', "MONTHS", kMonthly, 0}, nullptr)->size(), 2U);
    EXPECT_TRUE(data.HasPeriod('U', "SINGLE", kDaily));
}

TEST_F(UserFiles, RemoveTakesSymbolAndFile) {
    UserMarket market(m_folder);
    Add(&market, "one.csv");
    Add(&market, "two.csv");
    const Symbol* two = market.Find("TWO");
    QString error;
    EXPECT_TRUE(market.Remove("ONE", &error));
    EXPECT_FALSE(QFile::exists(Path("ONE.bars")));
    EXPECT_EQ(market.Find("ONE"), nullptr);
    EXPECT_EQ(market.Find("TWO"), two);
    EXPECT_FALSE(market.Remove("ONE", &error));
    EXPECT_TRUE(error.contains("ONE"));
    EXPECT_EQ(UserMarket(m_folder).Symbols().size(), 1U);
}

TEST_F(UserFiles, TwoProgramsShareTheFolder) {
    UserMarket first(m_folder);
    UserMarket second(m_folder);
    Add(&first, "one.csv");
    const Symbol* one = first.Find("ONE");
    Add(&second, "two.csv");
    Add(&first, "three.csv");
    EXPECT_EQ(first.Symbols().size(), 3U);
    EXPECT_EQ(first.Find("ONE"), one);
    EXPECT_EQ(second.Symbols().size(), 2U);
    second.Reload();
    EXPECT_EQ(second.Symbols().size(), 3U);
    EXPECT_EQ(UserMarket(m_folder).Symbols().size(), 3U);
}

TEST_F(UserFiles, AGarbageIndexIsReportedAndKept) {
    {
        UserMarket market(m_folder);
        Add(&market, "one.csv");
    }
    const QByteArray garbage = QByteArray("\xFF\x12 garbage\n\"\n,,,,\n") + '\0';
    Write("index.csv", garbage);
    UserMarket market(m_folder);
    ASSERT_EQ(market.Problems().size(), 1);
    EXPECT_TRUE(market.Problems()[0].contains("index.csv"));
    EXPECT_TRUE(market.Symbols().empty());
    EXPECT_EQ(Read("index.csv"), garbage);
    EXPECT_EQ(Add(&market, "one.csv"), "ONE-2");
    EXPECT_EQ(Read("index.damaged-1.csv"), garbage);
    EXPECT_TRUE(QFile::exists(Path("ONE.bars")));
    EXPECT_TRUE(UserMarket(m_folder).Problems().isEmpty());
}

TEST_F(UserFiles, ABadIndexLineCostsThatLineOnly) {
    {
        UserMarket market(m_folder);
        Add(&market, "one.csv");
        Add(&market, "two.csv");
    }
    QByteArray index = Read("index.csv");
    index.replace("ONE,", "ONE,,");
    index += "../EVIL,x,daily,1\nTHREE,x,daily,-1\n";
    Write("index.csv", index);
    UserMarket market(m_folder);
    ASSERT_EQ(market.Problems().size(), 3);
    EXPECT_TRUE(market.Problems()[0].contains("2"));
    EXPECT_TRUE(market.Problems()[1].contains("4"));
    EXPECT_NE(market.Find("TWO"), nullptr);
    Add(&market, "three.csv");
    EXPECT_EQ(Read("index.damaged-1.csv"), index);
    EXPECT_EQ(UserMarket(m_folder).Symbols().size(), 2U);
}

TEST_F(UserFiles, UnreadableBarsAreReportedKeptAndSkipped) {
    {
        UserMarket market(m_folder);
        for (const char* name : {"good.csv", "short.csv", "random.csv", "empty.csv", "gone.csv"}) {
            Add(&market, name);
        }
    }
    const QByteArray truncated = Read("SHORT.bars").chopped(20);
    Write("SHORT.bars", truncated);
    Write("RANDOM.bars", QByteArray(500, '\x5A'));
    Write("EMPTY.bars", "");
    QFile::remove(Path("GONE.bars"));
    UserMarket market(m_folder);
    EXPECT_EQ(market.Problems().size(), 4);
    EXPECT_EQ(market.Symbols().size(), 1U);
    // The next write keeps the lines of files that are still there.
    Add(&market, "new.csv");
    EXPECT_EQ(Read("SHORT.bars"), truncated);
    EXPECT_EQ(UserMarket(m_folder).Problems().size(), 3);
    EXPECT_EQ(UserMarket(m_folder).Symbols().size(), 2U);
}

TEST_F(UserFiles, BarsThatMakeNoSenseAreRefused) {
    UserMarket market(m_folder);
    Add(&market, "one.csv");
    const QByteArray good = Read("ONE.bars");
    ASSERT_EQ(good.size(), 24 + 3 * 48);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    // The first bar's time (now after the second's), open, and close.
    for (const auto& [offset, value] :
         std::vector<std::pair<qsizetype, double>>{{24, 1e6}, {32, nan}, {56, 500}}) {
        QByteArray broken = good;
        broken.replace(offset, 8, QByteArray(reinterpret_cast<const char*>(&value), 8));
        Write("ONE.bars", broken);
        QString error;
        EXPECT_FALSE(market.Load(*market.Find("ONE"), &error)) << offset;
        EXPECT_TRUE(error.contains("ONE.bars"));
    }
}

// Files may grow to `bytes` and no further while this lives, as on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        m_signal = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signal);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_before{};
    void (*m_signal)(int) = nullptr;
};

TEST_F(UserFiles, AFullDiskOrABlockedFolderChangesNothing) {
    UserMarket market(m_folder);
    const QString longName(200, 'a');
    Add(&market, longName + "1.csv");
    Add(&market, longName + "2.csv");
    const QByteArray index = Read("index.csv");
    const QStringList files = QDir(m_folder).entryList(QDir::Files);
    QString error;
    EXPECT_EQ(market.Add("none.csv", {}, 1, &error), nullptr);
    Write("blocked", "");
    UserMarket blocked(Path("blocked/my-files"));
    EXPECT_EQ(blocked.Add("one.csv", DailySeries(1), 1, &error), nullptr);
    EXPECT_FALSE(error.isEmpty());
    EXPECT_TRUE(blocked.Symbols().empty());
    QFile::remove(Path("blocked"));
    const auto expectRefused = [&](int bars, const char* file) {
        const FileSizeLimit limit(500);
        error.clear();
        EXPECT_EQ(market.Add("one.csv", DailySeries(bars), 1, &error), nullptr);
        EXPECT_TRUE(error.contains(file)) << error.toStdString();
    };
    expectRefused(100, "ONE.bars");
    expectRefused(1, "index.csv");
    EXPECT_EQ(Read("index.csv"), index);
    EXPECT_EQ(QDir(m_folder).entryList(QDir::Files), files);
    EXPECT_EQ(market.Symbols().size(), 2U);
    EXPECT_EQ(Add(&market, "one.csv"), "ONE");
}

}  // namespace
}  // namespace ta::terminal
