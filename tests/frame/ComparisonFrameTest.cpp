// Comparison charts in a running terminal: the dialog, the tab, what goes with it, the next run.

#include "platform/Clock.h"
#include "platform/SyncInfo.h"
#include "platform/ui/DateBridge.h"
#include "terminal/compare/ComparisonModel.h"
#include "terminal/compare/ComparisonView.h"
#include "terminal/frame/ComparisonSetFile.h"
#include "terminal/frame/PeriodBar.h"
#include "tests/frame/FrameFixture.h"
#include "tests/support/DialogDriver.h"

#include <QComboBox>
#include <QDateEdit>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QToolButton>
#include <QTreeView>

namespace ta::test {
namespace {

using terminal::Command;
using terminal::ComparisonMode;

const double kFirstDay = 17897;  // 2019-01-01, where the daily prices begin

class ComparisonFrameTest : public FrameTest {
protected:
    ComparisonFrameTest() { m_options.language = terminal::Language::English; }

    terminal::ComparisonView* Compared() { return Tabs().CurrentComparison(); }
    QString Legend() { return Compared()->LegendTexts().join('|'); }
    static void Press(QWidget& dialog, const char* button) {
        QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
    }
    /// Types what the symbol's text begins with, and the key of the Add button.
    static void AddSymbol(QWidget& dialog, const QString& typed) {
        auto* search = dialog.findChild<QLineEdit*>("searchEdit");
        search->clear();
        QTest::keyClicks(search, typed);
        QTest::keyClick(dialog.window(), Qt::Key_A, Qt::AltModifier);
        const auto* add = dialog.findChild<QPushButton*>("addButton");
        EXPECT_TRUE(QTest::qWaitFor([add] { return !add->isDown(); }));
    }
    static QStringList Chosen(QWidget& dialog) {
        QStringList texts;
        auto* list = dialog.findChild<QListWidget*>("chosenList");
        for (int i = 0; i < list->count(); ++i) {
            texts << list->item(i)->text();
        }
        return texts;
    }
    /// The dialog by its key; `steps`, then Enter.
    void Ask(const std::function<void(QWidget&)>& steps) {
        DialogDriver user;
        user.Expect([&](QWidget& dialog) {
            steps(dialog);
            if (dialog.isVisible()) {
                QTest::keyClick(dialog.findChild<QPushButton*>("okButton"), Qt::Key_Enter);
            }
        });
        QTest::keyClick(&Window(), Qt::Key_K, Qt::ControlModifier);
        Activate();
    }
    /// What a window manager does when a dialog closes.
    void Activate() {
        Window().activateWindow();
        EXPECT_TRUE(Await([this] { return Window().isActiveWindow(); }));
    }
    /// SPX beside 9901.
    void CompareTwo() {
        Tabs().OpenSymbol(2, "SPX");
        Ask([](QWidget& dialog) { AddSymbol(dialog, "9901"); });
        ASSERT_NE(Compared(), nullptr);
    }
};

TEST_F(ComparisonFrameTest, BeginsWithTheChartsSymbolInATabOfItsOwn) {
    Tabs().OpenSymbol(2, "SPX");
    Ask([](QWidget& dialog) {
        EXPECT_EQ(Chosen(dialog), QStringList{"[US market]SPX S&P 500 index"});
        EXPECT_EQ(dialog.findChild<QDateEdit*>("baseDate")->date(), QDate(2019, 1, 1));
        AddSymbol(dialog, "9901");
    });
    ASSERT_EQ(Tabs().count(), 2);
    ASSERT_NE(Compared(), nullptr);
    EXPECT_EQ(Window().focusWidget(), Compared());
    EXPECT_EQ(Tabs().tabText(1), "Compare SPX, 9901 Daily");
    EXPECT_EQ(Compared()->BarCount(), 300);
    EXPECT_EQ(Compared()->Set().baseDate, kFirstDay) << "what was offered";
    EXPECT_TRUE(Legend().contains("Simulated Electronics – base 2019/01/01 100.0"))
        << Legend().toStdString();
    Tabs().setCurrentIndex(0);
    ASSERT_NE(Tabs().CurrentChart(), nullptr);
    EXPECT_EQ(Chart().SymbolId(), "SPX");
}

TEST_F(ComparisonFrameTest, EditsTheTabInFrontAndKeepsItsBase) {
    ASSERT_NO_FATAL_FAILURE(CompareTwo());
    Ask([](QWidget& dialog) {
        EXPECT_EQ(Chosen(dialog).size(), 2);
        dialog.findChild<QDateEdit*>("baseDate")->setDate(QDate(2019, 2, 10));
    });
    EXPECT_EQ(Tabs().count(), 2);
    EXPECT_EQ(Compared()->Set().baseDate, kFirstDay + 40);
    Compared()->SetBaseDate(kFirstDay + 40.5);
    Ask([](QWidget& dialog) { AddSymbol(dialog, "AMZN"); });
    EXPECT_EQ(Compared()->Set().baseDate, kFirstDay + 40.5) << "a moment of the day that is shown";
    EXPECT_TRUE(Legend().contains("Amazon no data")) << "it has no daily prices";
    EXPECT_EQ(Status(),
              "Symbols without data: Amazon (The symbol AMZN has no data of this period.)");
    Ask([](QWidget& dialog) {
        Press(dialog, "deleteAllButton");
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(Compared()->Set().symbols.size(), 3U);
    EXPECT_EQ(Window().focusWidget(), Compared());
}

TEST_F(ComparisonFrameTest, ModesAndBaseHaveKeys) {
    ASSERT_NO_FATAL_FAILURE(CompareTwo());
    const auto press = [this](Qt::Key key) {
        QTest::keyClick(&Window(), key, Qt::ControlModifier | Qt::ShiftModifier);
    };
    press(Qt::Key_X);
    EXPECT_EQ(Compared()->Mode(), ComparisonMode::Indexed);
    press(Qt::Key_R);
    EXPECT_EQ(Compared()->Mode(), ComparisonMode::Prices);
    Compared()->SetCursorBar(40);
    press(Qt::Key_B);
    EXPECT_EQ(Compared()->Set().baseDate, kFirstDay + 40);
    press(Qt::Key_Home);
    EXPECT_EQ(Compared()->Set().baseDate, 0);
    // The mode is the tab's own.
    Choose(Command::NewTab);
    EXPECT_EQ(Compared()->Mode(), ComparisonMode::Prices);
    press(Qt::Key_P);
    Tabs().setCurrentIndex(1);
    EXPECT_TRUE(Action(Command::ComparePrices).isChecked());
    Tabs().setCurrentIndex(2);
    EXPECT_TRUE(Action(Command::ComparePercent).isChecked());
}

TEST_F(ComparisonFrameTest, WhatNeedsAGroupIsGreyedInFrontOfAComparison) {
    ASSERT_NO_FATAL_FAILURE(CompareTwo());
    constexpr Command kOfCharts[] = {Command::EditSettings, Command::DrawLine, Command::DrawPointer,
                                     Command::SelectLine, Command::DeleteLine};
    constexpr Command kOfComparisons[] = {Command::ComparePercent, Command::CompareIndexed,
                                          Command::ComparePrices, Command::CompareBaseCursor,
                                          Command::CompareBaseFirst};
    for (const Command command : kOfCharts) {
        EXPECT_FALSE(Action(command).isEnabled()) << static_cast<int>(command);
    }
    for (const Command command : kOfComparisons) {
        EXPECT_TRUE(Action(command).isEnabled()) << static_cast<int>(command);
    }
    EXPECT_FALSE(ToolBar().Group().isEnabled());
    EXPECT_EQ(ToolBar().Group().currentIndex(), -1);
    EXPECT_EQ(ToolBar().Symbol().text(), "");
    QTest::keyClick(&Window(), Qt::Key_T, Qt::ControlModifier);  // opens nothing
    Tabs().setCurrentIndex(0);
    EXPECT_TRUE(Action(Command::DrawLine).isEnabled());
    EXPECT_TRUE(ToolBar().Group().isEnabled());
    for (const Command command : kOfComparisons) {
        EXPECT_FALSE(Action(command).isEnabled()) << static_cast<int>(command);
    }
}

TEST_F(ComparisonFrameTest, PeriodsAndHistoryAreThoseOfTheComparison) {
    ASSERT_NO_FATAL_FAILURE(CompareTwo());
    QTest::keyClick(&Window(), Qt::Key_5, Qt::ControlModifier);  // five minutes
    EXPECT_EQ(Compared()->Shown(), (BarsKey{0, {}, 3, 5}));
    EXPECT_TRUE(Legend().contains("S&P 500 index no data"));
    EXPECT_EQ(Compared()->BarCount(), 48);
    EXPECT_TRUE(Tabs().tabText(1).endsWith("5 minutes")) << Tabs().tabText(1).toStdString();
    DialogDriver user;
    user.Expect([](QWidget& dialog) {
        auto* edit = dialog.findChild<QLineEdit*>("countEdit");
        QTest::mouseClick(dialog.findChild<QWidget*>("dailyRadio"), Qt::LeftButton);
        QTest::mouseClick(dialog.findChild<QWidget*>("readRadio"), Qt::LeftButton);
        edit->selectAll();
        QTest::keyClicks(edit, "60");
        QTest::keyClick(edit, Qt::Key_Enter);
    });
    Choose(Command::HistoryData);
    EXPECT_EQ(Compared()->Set().history,
              (ComparedHistory{.dataType = 0, .minutes = 5, .readMode = 0, .recordCount = 60}));
    EXPECT_EQ(Compared()->BarCount(), 120) << "the last 60 of 300 and of 90, and none between";
    QTest::keyClick(&Window(), Qt::Key_2, Qt::ControlModifier);  // weeks
    EXPECT_GT(Compared()->BarCount(), 42) << "all of them";
    End();
    Start();
    QTest::keyClick(&Window(), Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(Compared()->BarCount(), 120) << "each period's own, in the next run too";
}

TEST_F(ComparisonFrameTest, ThePeriodBarAndTypingOfferWhatItsSymbolsHave) {
    ASSERT_NO_FATAL_FAILURE(CompareTwo());
    const auto enabled = [this](const char* button) {
        return Window().findChild<QToolButton*>(button)->isEnabled();
    };
    EXPECT_TRUE(enabled("monthlyButton") && enabled("minutesButton"));
    EXPECT_FALSE(enabled("secondsButton"));
    QTest::keyClicks(Compared(), "7");
    QTest::keyClick(Compared(), Qt::Key_Return);
    EXPECT_EQ(Compared()->Shown(), (BarsKey{0, {}, 3, 7}));
    Tabs().Compare({{{2, "SPX"}, {2, "AMZN"}}, Compared()->Set().history, 0});
    EXPECT_FALSE(enabled("minutesButton")) << "neither has them";
    QTest::keyClicks(Compared(), "5");
    QTest::keyClick(Compared(), Qt::Key_Return);
    EXPECT_EQ(Compared()->Shown(), (BarsKey{0, {}, 3, 7}));
}

TEST_F(ComparisonFrameTest, ASymbolOpensInAChartBesideIt) {
    ASSERT_NO_FATAL_FAILURE(CompareTwo());
    QTest::keyClick(&Window(), Qt::Key_L, Qt::ControlModifier);
    QTest::keyClicks(&ToolBar().Symbol(), "AMZN");
    QTest::keyClick(&ToolBar().Symbol(), Qt::Key_Return);
    ASSERT_EQ(Tabs().count(), 3);
    ASSERT_NE(Tabs().CurrentChart(), nullptr);
    EXPECT_EQ(Chart().SymbolId(), "AMZN");
    EXPECT_EQ(Tabs().At(1).BarCount(), 300) << "the comparison stays";
}

TEST_F(ComparisonFrameTest, SurvivesARestart) {
    ASSERT_NO_FATAL_FAILURE(CompareTwo());
    Compared()->SetBaseDate(kFirstDay + 40);
    Compared()->SetMode(ComparisonMode::Indexed);
    Choose(Command::RisingRed);
    const auto set = Compared()->Set();
    const QString legend = Legend();
    End();
    Start();
    ASSERT_EQ(Tabs().count(), 2);
    ASSERT_NE(Compared(), nullptr);
    EXPECT_EQ(Compared()->Set(), set);
    EXPECT_EQ(Legend(), legend);
    EXPECT_TRUE(Action(Command::CompareIndexed).isChecked());
    EXPECT_FALSE(Action(Command::RisingRed).isChecked());
    End();
    Start();
    EXPECT_FALSE(Action(Command::RisingRed).isChecked()) << "also when it is in front at the end";
    Choose(Command::Chinese);
    EXPECT_EQ(Tabs().tabText(1), "比較 SPX, 9901 日線");
}

TEST_F(ComparisonFrameTest, AListOfTenIsFull) {
    Tabs().OpenSymbol(2, "SPX");
    std::vector<ComparedSymbol> ten(10, {2, "SPX"});
    Tabs().Compare({ten, {.recordCount = 60}, 0});
    Ask([this](QWidget& dialog) {
        m_prompts.ExpectMessage();
        AddSymbol(dialog, "9901");
        EXPECT_EQ(Chosen(dialog).size(), 10);
    });
    EXPECT_EQ(Compared()->Set().symbols, ten);
}

TEST_F(ComparisonFrameTest, SetsAndRecentSymbolsComeBackInTheNextRun) {
    ASSERT_NO_FATAL_FAILURE(CompareTwo());
    auto* sets = CSyncInfo::GetSettingCFG().GetServices().comparisonSets;
    ASSERT_NE(sets, nullptr);
    ASSERT_TRUE(sets->Save("pair", Compared()->Set()));
    const auto recent = sets->RecentSymbols();
    ASSERT_FALSE(recent.empty());
    EXPECT_EQ(recent.front(), (ComparedSymbol{16, "9901"}));
    End();
    Start();
    sets = CSyncInfo::GetSettingCFG().GetServices().comparisonSets;
    EXPECT_EQ(sets->Names(), std::vector<CString>{"pair"});
    EXPECT_EQ(sets->RecentSymbols(), recent);
}

// ---- The file of the sets ----

class ComparisonSetFileTest : public testing::Test {
protected:
    void Write(const QByteArray& bytes) const {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray Bytes() const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    QString path = folder.filePath("sets.json");
    terminal::ComparisonSetFile sets{path};
    const ComparisonSet whole{{{2, "SPX"}, {'U', "\xA5\xD0-1"}}, {3, 7, 1, 99, 18000, 5}, 18000.25};
};

TEST_F(ComparisonSetFileTest, KeepsEveryFieldUnderAName) {
    ComparisonSet set;
    EXPECT_TRUE(sets.Names().empty());
    EXPECT_FALSE(sets.Load("one", set));
    ASSERT_TRUE(sets.Save("one", {}) && sets.Save("\xA5\x41", whole) && sets.Save("one", whole));
    sets.SetRecentSymbols(whole.symbols);
    sets.SetRecentSymbols({whole.symbols[1]});
    const terminal::ComparisonSetFile again(path);
    EXPECT_EQ(again.Names(), (std::vector<CString>{"one", "\xA5\x41"}));
    ASSERT_TRUE(again.Load("one", set));
    EXPECT_EQ(set, whole);
    EXPECT_EQ(again.RecentSymbols(), std::vector<ComparedSymbol>{whole.symbols[1]});
    EXPECT_TRUE(sets.Remove("one"));
    EXPECT_FALSE(sets.Remove("one"));
    EXPECT_FALSE(sets.Save("", whole)) << "it could never be brought back";
    EXPECT_EQ(again.Names(), std::vector<CString>{"\xA5\x41"});
    EXPECT_EQ(again.RecentSymbols().size(), 1U);
}

TEST_F(ComparisonSetFileTest, LeavesAloneWhatItCannotRead) {
    for (const QByteArray bytes : {"{\"a\": 1}", "[", "\xff\xfe"}) {
        Write(bytes);
        ComparisonSet set;
        EXPECT_TRUE(sets.Names().empty() && sets.RecentSymbols().empty());
        EXPECT_FALSE(sets.Save("one", whole) || sets.Remove("one") || sets.Load("one", set));
        sets.SetRecentSymbols(whole.symbols);
        EXPECT_EQ(Bytes(), bytes);
    }
    Write(R"([7, {"name": "none"}, {"name": "", "symbols": []},
              {"name": "half", "symbols": [{"market": 999, "code": "x"}, 3, {"market": 2}],
               "dataType": "x"}, {"recent": 5}])");
    EXPECT_EQ(sets.Names(), std::vector<CString>{"half"});
    ComparisonSet set = whole;
    EXPECT_TRUE(sets.Load("half", set));
    EXPECT_EQ(set, ComparisonSet());
    EXPECT_TRUE(sets.Save("half", whole));
    EXPECT_TRUE(Bytes().contains("\"none\"") && Bytes().contains("7,")) << "entries that are none";
}

}  // namespace
}  // namespace ta::test
