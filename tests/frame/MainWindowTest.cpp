#include "platform/ui/TextBridge.h"
#include "tests/frame/FrameFixture.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QMenuBar>
#include <QScreen>
#include <QTabBar>

namespace ta::test {
namespace {

using terminal::Command;
using terminal::MenuId;
using terminal::SymbolBox;

const QStringList kNames{"共用", "另一個"};

class MainWindowTest : public FrameTest {
protected:
    SymbolBox& Box() { return ToolBar().Symbol(); }
    QAbstractItemView& List() { return *Box().completer()->popup(); }

    /// Puts the focus into the symbol box by its shortcut's action and types.
    void TypeSymbol(const QString& text) {
        Choose(Command::FindSymbol);
        ASSERT_TRUE(Await([this] { return Box().hasSelectedText() || Box().text().isEmpty(); }));
        QTest::keyClicks(&Box(), text);
    }
    void ChoosePeriod(int index) {
        Window().Parts().commands.At(MenuId::Periods).actions().at(index)->trigger();
    }
    /// What can be read in the window in Chinese, hovered or heard, each once; without the texts of
    /// the toolkit's scroll buttons.
    QStringList ChineseTexts() {
        QStringList texts = Chart().LegendTexts() << Window().windowTitle();
        for (const auto* part : Window().findChildren<QObject*>()) {
            for (const char* property : {"text", "iconText", "title", "toolTip", "windowTitle",
                                         "placeholderText", "accessibleName", "currentText"}) {
                texts.append(part->property(property).toString());
            }
            texts.resize(part->objectName().startsWith("Scroll") ? texts.size() - 8 : texts.size());
        }
        for (int i = 0; i < Tabs().count(); ++i) {
            texts << Tabs().tabText(i) << Tabs().tabToolTip(i);
        }
        for (int i = 0; i < ToolBar().Period().count(); ++i) {
            texts.append(ToolBar().Period().itemText(i));
        }
        texts.removeDuplicates();
        texts.sort();
        return texts.filter(QRegularExpression("\\p{Han}"));
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

    TypeSymbol("nonsense");
    QTest::keyClick(&Box(), Qt::Key_Return);
    EXPECT_TRUE(Status().contains("nonsense")) << Status().toStdString();
    EXPECT_EQ(Box().selectedText(), "nonsense") << "To be typed over.";
    EXPECT_EQ(Chart().SymbolId(), "AMZN");
}

TEST_F(MainWindowTest, PeriodsComeFromTheBoxTheMenuAndKeys) {
    Tabs().OpenSymbol(16, "9901");
    QTest::keyClick(&ToolBar().Period(), Qt::Key_Down);  // weekly
    EXPECT_EQ(Chart().Period(), 1);
    ChoosePeriod(4);
    EXPECT_EQ(Chart().Period(), 3);
    EXPECT_EQ(Chart().Count(), 5);
    EXPECT_EQ(Chart().BarCount(), 48);
    // A symbol without minutes falls back to its days.
    Tabs().OpenSymbol(2, "SPX");
    EXPECT_EQ(Chart().Period(), 0);
    EXPECT_EQ(Chart().BarCount(), 300);
}

TEST_F(MainWindowTest, TabsOpenWithTheCurrentSymbolAndClose) {
    EXPECT_FALSE(Action(Command::CloseTab).isEnabled());
    Tabs().OpenSymbol(16, "9901");
    Choose(Command::NewTab);
    ASSERT_EQ(Tabs().count(), 2);
    EXPECT_TRUE(Action(Command::CloseTab).isEnabled());
    EXPECT_EQ(Chart().SymbolId(), "9901");
    EXPECT_EQ(&Chart(), &Tabs().At(1));
    Tabs().OpenSymbol(2, "SPX");
    EXPECT_EQ(Tabs().ChartAt(0)->SymbolId(), "9901");
    QTest::keyClick(Tabs().tabBar(), Qt::Key_Left);
    EXPECT_EQ(Box().text(), "9901 模擬電子");
    Choose(Command::CloseTab);
    EXPECT_EQ(Tabs().count(), 1);
    EXPECT_EQ(Chart().SymbolId(), "SPX");
    EXPECT_EQ(Box().text(), "SPX S&P 500 指數");
    EXPECT_FALSE(Action(Command::CloseTab).isEnabled());
    Tabs().Close(0);
    EXPECT_EQ(Tabs().count(), 1);
}

TEST_F(MainWindowTest, NoTwoActionsShareKeysOrTextsInAMenu) {
    QStringList keys;
    for (const QAction* action : Window().findChildren<QAction*>()) {
        if (!action->shortcut().isEmpty()) {
            keys.append(action->shortcut().toString());
        }
    }
    EXPECT_GE(keys.size(), 18);
    EXPECT_EQ(keys.removeDuplicates(), 0) << keys.join(' ').toStdString();

    for (const Command language : {Command::English, Command::Chinese}) {
        Choose(language);
        QList<QWidget*> menus{Window().menuBar()};
        for (QMenu* menu : Window().findChildren<QMenu*>()) {
            emit menu->aboutToShow();
            menus.append(menu);
        }
        EXPECT_GE(menus.size(), 9);
        for (const QWidget* menu : menus) {
            QStringList texts;
            for (const QAction* action : menu->actions()) {
                texts.append(action->isSeparator() ? QStringList() : QStringList(action->text()));
            }
            EXPECT_EQ(texts.removeDuplicates(), 0) << texts.join(' ').toStdString();
        }
    }
}

TEST_F(MainWindowTest, ChangesItsLanguageWhileItRuns) {
    Choose(Command::NewTab);
    Tabs().OpenSymbol(16, "9901");
    const QStringList chinese = ChineseTexts();
    EXPECT_GT(chinese.size(), 80);
    Choose(Command::English);
    for (const QString& left : ChineseTexts()) {
        EXPECT_TRUE(left.contains("繁體中文") || left == "預設群組") << left.toStdString();
    }
    EXPECT_EQ(Tabs().tabText(0), "SPX S&&P 500 index Daily");
    EXPECT_EQ(Window().menuBar()->actions().first()->text(), "&File");
    Choose(Command::Chinese);
    EXPECT_EQ(ChineseTexts().join('\n').toStdString(), chinese.join('\n').toStdString());
}

TEST_F(MainWindowTest, ItsFirstSizeFitsTheScreen) {
    const QSize room = Window().screen()->availableSize();
    ASSERT_LT(room.width(), 1280) << "There is room for any size.";
    EXPECT_EQ(Window().size().boundedTo(room), Window().size());
    EXPECT_LT(Window().height(), room.height()) << "The title bar needs some.";
    const QFont font = QApplication::font();
    QFont large = font;
    large.setPointSizeF(font.pointSizeF() * 1.5);
    QApplication::setFont(large);
    const QSize least = Window().minimumSizeHint();
    QApplication::setFont(font);
    EXPECT_EQ(least.boundedTo({1366, 700}), least);
}

TEST_F(MainWindowTest, NextRunBringsBackGroupsTabsAndSettings) {
    AddGroup("趨勢");
    AddGroup("短線");
    Tabs().OpenSymbol(16, "9901");
    ChoosePeriod(5);
    Choose(Command::NewTab);
    Tabs().OpenSymbol(2, "AMZN");
    ChooseGroup("趨勢");
    Choose(Command::NewTab);
    Tabs().OpenSymbol(2, "SPX");
    Tabs().tabBar()->setCurrentIndex(1);
    Choose(Command::English);
    Choose(Command::RisingRed);
    const QStringList groups = GroupsInRepository();
    const terminal::FrameState state = Window().State();

    End();
    Start();
    EXPECT_EQ(GroupsInRepository(), groups);
    EXPECT_EQ(GroupsInBox(), groups);
    EXPECT_EQ(Window().State().tabs, state.tabs);
    EXPECT_EQ(Tabs().currentIndex(), 1);
    EXPECT_EQ(Chart().SymbolId(), "AMZN");
    EXPECT_EQ(Chart().GroupName(), ui::FromQString("趨勢"));
    EXPECT_EQ(Tabs().ChartAt(0)->GroupName(), ui::FromQString("短線"));
    EXPECT_EQ(Tabs().ChartAt(0)->Count(), 15);
    EXPECT_EQ(Window().menuBar()->actions().first()->text(), "&File");
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(Tabs().ChartAt(i)->RisingRed()) << i;
    }
}

TEST_F(MainWindowTest, RemembersATabWhoseSymbolIsGone) {
    End();
    terminal::FrameState state;
    state.tabs = {{{{2, "GONE", 0, 0, 99}}}, {{{2, "SPX", 0, 0, 0}}}};
    ASSERT_TRUE(SaveFrameState(terminal::FrameStatePath(StorePath()), state));
    Start();
    EXPECT_EQ(Tabs().count(), 2);
    EXPECT_EQ(Chart().BarCount(), 0);
    EXPECT_EQ(Chart().GroupName(), Repository().GetSystemDefaultGroup());
    Tabs().OpenSymbol(2, "SPX");
    EXPECT_EQ(Chart().BarCount(), 300);
}

/// Another terminal on the same store.
class TwoTerminals : public FrameTest {
protected:
    void SetUp() override {
        Start();
        for (const QString& name : kNames) {
            AddGroup(name);
        }
        ChooseGroup(kNames[0]);
        Choose(Command::NewTab);
        ASSERT_EQ(m_other.Open(StorePath()).state, terminal::OpenResult::Opened);
    }

    /// The other terminal saves this list of groups. Both tabs then show `shown`.
    void SaveInOther(const QStringList& groups, const QString& shown) {
        std::vector<CString> names;
        for (const QString& group : groups) {
            names.push_back(ui::FromQString(group));
        }
        ASSERT_TRUE(m_other.SaveTAGroupNameList(names));
        m_other.PackFile();
        // The window's own timer finds it.
        ASSERT_TRUE(Await([&] { return GroupsInBox() == groups; }));
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(Tabs().ChartAt(i)->GroupName(), ui::FromQString(shown));
            EXPECT_EQ(Tabs().ChartAt(i)->PaneCount(), 4);
        }
        EXPECT_EQ(ToolBar().Group().currentText(), shown);
    }

    terminal::SqliteStore m_other;
};

TEST_F(TwoTerminals, ShowWhatTheOtherOneSaves) {
    SaveInOther({GroupsInRepository().first(), "改名了", kNames[1]}, "改名了");
}

TEST_F(TwoTerminals, VanishedGroupGivesTheDefaultAndANotice) {
    const QString byDefault = GroupsInRepository().first();
    const int number = Repository().GetUniNumByGroupName(ui::FromQString(kNames[1]));
    ASSERT_TRUE(m_other.SaveTAGroupUniNum(1, number));
    SaveInOther({byDefault, kNames[1]}, byDefault);
    EXPECT_TRUE(Status().contains(byDefault));
}

}  // namespace
}  // namespace ta::test
