#include "terminal/entitlement/TerminalEntitlement.h"
#include "terminal/frame/FrameState.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace ta::terminal {
namespace {

void Write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

TEST(FrameState, ComesBackAsItWas) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("state.ini");
    FrameState state{
        .tabs = {{{{2, "SPX", 0, 0, 0, {{{0, 0}, {0, 60, 1}}, {{3, 7}, {1, 1440, 18000}}}}}},
                 {{{16, "9901", 3, 15, 7}, {2, "SPX", 1, 0, 0, {{{1, 0}, {0, 70, 1}}}}},
                  {2, 1, -1, {{2, {0.1}}, {5, {0.5, 1.0 / 3, 0.25, 0.75}}}, {true, false, true}}},
                 {{{'U', "檔案-1", 2, 0, -1}}},
                 {{{.symbol = {},
                    .comparison =
                        {{{{{2, "SPX"}, {'U', "\xA5\xD0-1"}}, {3, 7, 1, 60, 18000}, 18000.375},
                          ComparisonMode::Prices}}}}}},
        .currentTab = 1,
        .language = Language::English,
        .risingRed = false,
        .periodBar = false,
        .favourites = {7, 240},
        .geometry = QByteArray("\0\x01\xff,;\"", 6)};
    ASSERT_TRUE(SaveFrameState(path, state));
    EXPECT_EQ(LoadFrameState(path), state);
    // Fewer tabs leave none of the old ones behind.
    state.tabs.resize(1);
    ASSERT_TRUE(SaveFrameState(path, state));
    EXPECT_EQ(LoadFrameState(path), state);
}

TEST(FrameState, StartsWithDefaultsWithoutAFileOrWithGarbage) {
    const QTemporaryDir folder;
    EXPECT_EQ(LoadFrameState(folder.filePath("none.ini")), FrameState());
    const QString garbage = folder.filePath("garbage.ini");
    Write(garbage, QByteArray("\xff\xfe[[[\n=\n[tabs]\nsize=many\n", 24));
    EXPECT_EQ(LoadFrameState(garbage), FrameState());
    Write(garbage, "[tabs]\nsize=1\n1\\depths=0/0/0/60, a/b/c/d/e, 0/0/0/-5/1, 2/0/0/9/1, \n");
    EXPECT_EQ(LoadFrameState(garbage).tabs[0].charts[0].depths,
              (HistoryDepths{{{2, 0}, {0, 9, 1}}}));
    // A comparison that cannot be read leaves the other tabs alone.
    Write(garbage, "[tabs]\nsize=2\n1\\comparison={symbols\n2\\symbol=SPX\n");
    EXPECT_EQ(LoadFrameState(garbage).tabs[0].charts[0].comparison, ComparisonState());
    EXPECT_EQ(LoadFrameState(garbage).tabs[1].charts[0].symbol, "SPX");
    Write(garbage, "[tabs]\nsize=2000000000\n1\\others\\size=2000000000\n");
    EXPECT_LE(LoadFrameState(garbage).tabs.size(), 50);
    EXPECT_LE(LoadFrameState(garbage).tabs[0].charts.size(), 10);
}

TEST(FrameState, ReadsAFileOfATimeWhenATabHadOneChart) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("state.ini");
    Write(path,
          "[frame]\ncurrentTab=1\n[tabs]\nsize=2\n1\\market=16\n1\\symbol=9901\n1\\period=3\n"
          "1\\count=15\n1\\group=7\n1\\depths=3/15/0/60/1\n2\\market=2\n2\\symbol=SPX\n");
    const QList<TabState> tabs = LoadFrameState(path).tabs;
    EXPECT_EQ(tabs, (QList<TabState>{{{{16, "9901", 3, 15, 7, {{{3, 15}, {0, 60, 1}}}}}},
                                     {{{2, "SPX", 0, 0, -1}}}}));
    EXPECT_EQ(tabs[0].grid, GridState());
}

TEST(FrameState, TellsWhenItCannotBeWritten) {
    const QTemporaryDir folder;
    Write(folder.filePath("file"), "");
    EXPECT_FALSE(SaveFrameState(folder.filePath("file/state.ini"), FrameState()));
}

TEST(Entitlement, AllowsWithinLimitsWhatTheFileDoesNotDeny) {
    int inAll = 0;
    int perSymbol = 0;
    const QTemporaryDir folder;
    const QString path = folder.filePath("state.ini");
    Write(path, "[entitlement]\nsecondData=false\ntrendLinesPerSymbol=3\n");
    const TerminalEntitlement some(path);
    EXPECT_TRUE(some.bIsFunctionAllowed(Function::AdvancedStudies));
    EXPECT_FALSE(some.bIsFunctionAllowed(Function::SecondData));
    EXPECT_FALSE(some.bIsSecondDataAllowed(16));
    some.GetTATrendLineMaxCount(inAll, perSymbol);
    EXPECT_EQ(inAll, 1000);
    EXPECT_EQ(perSymbol, 3);
}

}  // namespace
}  // namespace ta::terminal
