#include "platform/ui/TextBridge.h"
#include "tests/frame/FrameFixture.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QMenuBar>
#include <QStatusBar>
#include <QTabBar>

namespace ta::test {
namespace {

using terminal::Command;
using terminal::MenuId;
using terminal::SymbolBox;

class MainWindowTest : public FrameTest {
protected:
    SymbolBox& Box() { return Window().ToolBar().Symbol(); }
    QAbstractItemView& List() { return *Box().completer()->popup(); }
    QTabBar& TabBar() { return *Window().findChild<QTabBar*>(); }

    /// Puts the focus into the symbol box by its shortcut's action and types.
    void TypeSymbol(const QString& text) {
        Choose(Command::FindSymbol);
        ASSERT_TRUE(Await([this] { return Box().hasSelectedText() || Box().text().isEmpty(); }));
        QTest::keyClicks(&Box(), text);
    }
};

TEST_F(MainWindowTest, SymbolBoxFindsWhileTyping) {
    TypeSymbol("amazon");
    ASSERT_TRUE(List().isVisible());
    EXPECT_EQ(List().model()->rowCount(), 1);
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_EQ(Chart().SymbolId(), "AMZN");
    EXPECT_FALSE(List().isVisible());
    // Only monthly prices there are: the chart goes there.
    EXPECT_EQ(Chart().Period(), 2);
    EXPECT_EQ(Chart().BarCount(), 60);
    EXPECT_TRUE(Await(
        [this] { return Chart().hasFocus() || Chart().isAncestorOf(Window().focusWidget()); }));
}

TEST_F(MainWindowTest, PeriodsComeFromTheBoxTheMenuAndKeys) {
    Window().OpenSymbol(16, "9901");
    QTest::keyClick(&Window().ToolBar().Period(), Qt::Key_Down);  // weekly
    EXPECT_EQ(Chart().Period(), 1);
    Window().GetCommands().At(MenuId::Periods).actions().at(4)->trigger();
    EXPECT_EQ(Chart().Period(), 3);
    EXPECT_EQ(Chart().Count(), 5);
    EXPECT_EQ(Chart().BarCount(), 48);
    // A symbol without minutes falls back to its days.
    Window().OpenSymbol(2, "SPX");
    EXPECT_EQ(Chart().Period(), 0);
    EXPECT_EQ(Chart().BarCount(), 300);
}

TEST_F(MainWindowTest, TabsOpenWithTheCurrentSymbolAndClose) {
    EXPECT_FALSE(Window().GetCommands().At(Command::CloseTab).isEnabled());
    Window().OpenSymbol(16, "9901");
    Choose(Command::NewTab);
    ASSERT_EQ(Window().TabCount(), 2);
    EXPECT_EQ(Chart().SymbolId(), "9901");
    EXPECT_EQ(&Chart(), &Window().ChartAt(1));
    Window().OpenSymbol(2, "SPX");
    EXPECT_EQ(Window().ChartAt(0).SymbolId(), "9901");
    QTest::keyClick(&TabBar(), Qt::Key_Left);
    EXPECT_EQ(Box().text(), "9901 模擬電子");
    Choose(Command::CloseTab);
    EXPECT_EQ(Window().TabCount(), 1);
    EXPECT_EQ(Chart().SymbolId(), "SPX");
    EXPECT_EQ(Box().text(), "SPX S&P 500 指數");
    Window().CloseTab(0);
    EXPECT_EQ(Window().TabCount(), 1);
}

TEST_F(MainWindowTest, NoTwoActionsShareTheirKeys) {
    QStringList keys;
    for (const QAction* action : Window().findChildren<QAction*>()) {
        if (!action->shortcut().isEmpty()) {
            keys.append(action->shortcut().toString());
        }
    }
    EXPECT_GE(keys.size(), 18);
    EXPECT_EQ(keys.removeDuplicates(), 0) << keys.join(' ').toStdString();
}

TEST_F(MainWindowTest, NextRunBringsBackGroupsTabsAndSettings) {
    AddGroup("趨勢");
    AddGroup("短線");
    Window().OpenSymbol(16, "9901");
    Window().GetCommands().At(MenuId::Periods).actions().at(5)->trigger();
    Choose(Command::NewTab);
    Window().OpenSymbol(2, "AMZN");
    emit Window().ToolBar().groupChosen("趨勢");
    TabBar().setCurrentIndex(0);
    Choose(Command::English);
    Choose(Command::RisingRed);
    const QStringList groups = GroupsInRepository();
    const terminal::FrameState state = Window().State();

    End();
    Start();
    EXPECT_EQ(GroupsInRepository(), groups);
    EXPECT_EQ(GroupsInBox(), groups);
    EXPECT_EQ(Window().State().tabs, state.tabs);
    EXPECT_EQ(Window().State().currentTab, 0);
    EXPECT_EQ(Chart().GroupName(), ui::FromQString("短線"));
    EXPECT_EQ(Chart().Count(), 15);
    EXPECT_EQ(Window().ChartAt(1).GroupName(), ui::FromQString("趨勢"));
    EXPECT_EQ(Window().menuBar()->actions().first()->text(), "&File");
    EXPECT_FALSE(Chart().RisingRed());
}

TEST_F(MainWindowTest, RemembersATabWhoseSymbolIsGone) {
    End();
    terminal::FrameState state;
    state.tabs = {{2, "GONE", 0, 0, 99}, {2, "SPX", 0, 0, 0}};
    ASSERT_TRUE(SaveFrameState(terminal::FrameStatePath(StorePath()), state));
    Start();
    EXPECT_EQ(Window().TabCount(), 2);
    EXPECT_EQ(Chart().BarCount(), 0);
    EXPECT_EQ(Chart().GroupName(), Repository().GetSystemDefaultGroup());
    Window().OpenSymbol(2, "SPX");
    EXPECT_EQ(Chart().BarCount(), 300);
}

/// Another terminal on the same store.
class TwoTerminals : public MainWindowTest {
protected:
    void SetUp() override {
        Start();
        AddGroup("共用");
        AddGroup("另一個");
        emit Window().ToolBar().groupChosen("共用");
        Choose(Command::NewTab);
        ASSERT_EQ(m_other.Open(StorePath()).state, terminal::OpenResult::Opened);
    }

    /// The other terminal saves this list of groups.
    void SaveInOther(const QStringList& groups) {
        std::vector<CString> names;
        for (const QString& group : groups) {
            names.push_back(ui::FromQString(group));
        }
        ASSERT_TRUE(m_other.SaveTAGroupNameList(names));
        m_other.PackFile();
    }

    terminal::SqliteStore m_other;
};

TEST_F(TwoTerminals, ShowWhatTheOtherOneSaves) {
    QStringList groups = GroupsInRepository();
    groups[1] = "改名了";
    SaveInOther(groups);
    // The window's own timer finds it.
    ASSERT_TRUE(Await([this] { return GroupsInBox().contains("改名了"); }));
    EXPECT_EQ(GroupsInBox(), groups);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(Window().ChartAt(i).GroupName(), ui::FromQString("改名了"));
        EXPECT_EQ(Window().ChartAt(i).PaneCount(), 4);
    }
    EXPECT_EQ(Window().ToolBar().Group().currentText(), "改名了");
}

TEST_F(TwoTerminals, VanishedGroupGivesTheDefaultAndANotice) {
    const QString byDefault = GroupsInRepository().first();
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(Window().ChartAt(i).GroupName(), ui::FromQString("共用"));
    }
    const int number = Repository().GetUniNumByGroupName(ui::FromQString("另一個"));
    ASSERT_TRUE(m_other.SaveTAGroupUniNum(1, number));
    SaveInOther({byDefault, "另一個"});
    ASSERT_TRUE(Await([this] { return !GroupsInBox().contains("共用"); }));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(Window().ChartAt(i).GroupName(), ui::FromQString(byDefault));
    }
    EXPECT_TRUE(Window().statusBar()->currentMessage().contains(byDefault));
    EXPECT_EQ(Window().ToolBar().Group().currentText(), byDefault);
}

}  // namespace
}  // namespace ta::test
