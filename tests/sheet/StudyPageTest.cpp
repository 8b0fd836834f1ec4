// The study and parameter page, with the terminal's real studies: what the user sees and does, and
// what the repository and the sheet hold after it was saved.

#include "platform/SyncInfo.h"
#include "platform/Text.h"
#include "platform/ui/TextBridge.h"
#include "terminal/lang/Language.h"
#include "terminal/studies/TerminalChartModule.h"
#include "tests/sheet/SheetFixture.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QScrollArea>
#include <QTest>
#include <QToolButton>

#include <cstdio>
#include <cstdlib>
#include <set>

namespace ta::test {
namespace {

using StudyPageTest = SheetFixture;

// ---- What is shown ----

TEST_F(StudyPageTest, ShowsThePanesAndTheEditorOfTheSelectedStudy) {
    Open();
    EXPECT_EQ(Panes(), kTrendPanes);
    EXPECT_EQ(Text("期數3"), "20");
    for (const int study : {2, -1}) {  // one that nobody knows, and the pane itself
        ClickStudy(0, study);
        EXPECT_TRUE(View().findChildren<QAbstractSpinBox*>().isEmpty());
    }
}

TEST_F(StudyPageTest, StartsWhereTheChartAsksItTo) {
    const struct {
        int showCount, pane, study;
        std::pair<int, int> selected;
    } cases[] = {
        {0, -1, -1, {0, -1}},  {0, 2, 3, {2, -1}},  // there is no third study
        {0, 3, 0, {-1, -1}},                        // not one of the three panes
        {2, 2, 1, {-1, -1}},                        // the chart shows two
        {5, 4, 1, {4, 0}},                          // and here five
        {20, 12, 1, {-1, -1}},
    };
    for (const auto& each : cases) {
        Open(kStudies, each.pane, each.study, "Trend", each.showCount);
        EXPECT_EQ(std::pair(Tree().CurrentPlace().pane, Tree().CurrentPlace().study), each.selected)
            << each.showCount << ' ' << each.pane << ' ' << each.study;
        EXPECT_EQ(ShowCount().value(), 3);
        EXPECT_FALSE(Sheet().IsEditStudy());
    }
}

// ---- Parameters and shapes ----

TEST_F(StudyPageTest, ATypicalEditIsSavedAndReported) {
    Open();
    const auto shapesBefore = DrawInfo().vecGetStudyShapes(kAverages);
    Enter("期數1", "7");
    Press(Sheet(), Qt::Key_Tab);  // to the button that reverts
    Press(Sheet(), Qt::Key_Tab);
    EXPECT_TRUE(Value("期數2").hasFocus());
    Press(Sheet(), Qt::Key_Up);
    EXPECT_EQ(Text("期數2"), "11");
    auto& colour = Named<QPushButton>("均線1 IDS_TADIALOGS-SHEET_COLOUR");
    prompts.ExpectCancel(ScriptedPrompts::Kind::Colour);
    prompts.ExpectColour(QColor(0x12, 0x34, 0x56));
    TabTo(colour);
    PressKey(Qt::Key_Space);
    EXPECT_EQ(prompts.Last().preset, colour.accessibleDescription().toLower());
    EXPECT_EQ(DrawInfo().vecGetStudyShapes(kAverages), shapesBefore) << "cancelled";
    PressKey(Qt::Key_Space);
    TabTo(Named<QSpinBox>("均線1 IDS_TADIALOGS-SHEET_WIDTH"));
    Press(Sheet(), Qt::Key_Up);
    TabTo(Named<QComboBox>("均線2 IDS_TADIALOGS-SHEET_STYLE"));
    Press(Sheet(), Qt::Key_Down);
    TabTo(Named<QCheckBox>("均線3 IDS_TADIALOGS-SHEET_VISIBILITY"));
    Press(Sheet(), Qt::Key_Space);

    EXPECT_TRUE(Sheet().IsEditStudy());
    EXPECT_EQ(StoredParams(kAverages), (Numbers{5, 10, 20, 60})) << "not before it is saved";
    EXPECT_EQ(DrawInfo().vecGetStudyShapes(kAverages), shapesBefore);
    PressKey(Qt::Key_Return);
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(StoredParams(kAverages), (Numbers{7, 11, 20, 60}));
    const auto shapes = DrawInfo().vecGetStudyShapes(kAverages);
    EXPECT_EQ(shapes[0], (StudyShape{0x123456, 2, 0, true}));
    EXPECT_EQ(shapes[1], (StudyShape{shapesBefore[1].colour, 1, 1, true}));
    EXPECT_FALSE(shapes[2].visible);
    EXPECT_EQ(shapes[3], shapesBefore[3]);
    EXPECT_EQ(memory.params[0], Names{"4=7,11,20,60"});

    EXPECT_EQ(Changed(), Changes{5});
    EXPECT_TRUE(Sheet().IsEditStudy());
    std::vector<StudyType> types;
    Names names;
    EXPECT_EQ(Sheet().GetChangeStudy(types, names), 1);
    EXPECT_EQ(types, std::vector<StudyType>{kAverages});
    EXPECT_EQ(names,
              (Names{text::FromUtf8("均線1"), text::FromUtf8("均線2"), text::FromUtf8("均線3")}));
}

TEST_F(StudyPageTest, AValueThatCannotBeIsShownAtItsFieldAndNotSaved) {
    Open();
    Enter("期數2", "2000");
    EXPECT_EQ(Text("期數2"), "2000") << "not put right behind the user's back";
    EXPECT_EQ(Faults(), QStringList{kRange + " 1 1000"});
    Enter("期數4", "");
    EXPECT_EQ(Faults(), (QStringList{kRange + " 1 1000", kNumber}));
    for (const char* text : {"x", "1e999", "nan", "1 2"}) {
        Enter("期數4", text);
        EXPECT_EQ(Faults().back(), kNumber) << text;
    }
    Enter("期數4", "1.5");
    EXPECT_EQ(Faults().back(), kInteger);

    ClickStudy(1, 0);
    Save();
    EXPECT_TRUE(Sheet().isVisible());
    EXPECT_EQ(SelectedStudy(), "移動平均線");
    EXPECT_TRUE(Value("期數2").hasFocus()) << "the first one";
    EXPECT_EQ(StoredParams(kAverages), (Numbers{5, 10, 20, 60}));
    EXPECT_EQ(memory.params[0], Names());
    EXPECT_EQ(Changed(), Changes{});

    Enter("期數2", "");
    TypeText(*Value("期數2").findChild<QLineEdit*>(), "２５");  // the input method's wide digits
    Enter("期數4", " 80.0 ");
    EXPECT_EQ(Faults(), QStringList());
    Save();
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(StoredParams(kAverages), (Numbers{5, 25, 20, 80}));
}

TEST_F(StudyPageTest, TheEdgesOfTheRangeAndOfTheSteps) {
    OpenWith({{kBands, kSar}}, 0, 1);
    const QString deviations = "標準差倍數";  // 0.1 to 10, step 0.1, two decimals
    for (const char* text : {"0.1", "10.00"}) {
        Enter(deviations, text);
        EXPECT_EQ(Faults(), QStringList()) << text;
    }
    for (const char* text : {"0.09", "10.01"}) {
        Enter(deviations, text);
        EXPECT_EQ(Faults(), QStringList{kRange + " 0.1 10"}) << text;
    }
    Enter(deviations, "2.345");
    EXPECT_EQ(Faults(), QStringList{kDecimals + " 2"});
    Enter(deviations, "9.95");
    Press(Sheet(), Qt::Key_Up);
    EXPECT_EQ(Text(deviations), "10") << "steps end at the range";
    Press(Sheet(), Qt::Key_Up);
    EXPECT_EQ(Text(deviations), "10");
    Press(Sheet(), Qt::Key_PageDown);
    EXPECT_EQ(Text(deviations), "9");
    Enter(deviations, "x");
    Press(Sheet(), Qt::Key_Down);
    EXPECT_EQ(Text(deviations), "1.9") << "from the default";
}

TEST_F(StudyPageTest, ARuleBetweenFieldsIsShownAndKept) {
    Open(kStudies, 2, 2);
    Enter("短期", "26");
    EXPECT_EQ(Faults(), QStringList{kShortBelowLong});
    Save();
    EXPECT_TRUE(Sheet().isVisible());
    EXPECT_TRUE(Value("短期").hasFocus());
    Enter("長期", "x");
    EXPECT_EQ(Faults(), QStringList{kNumber}) << "rules are between numbers";
    Enter("長期", "27");
    EXPECT_EQ(Faults(), QStringList());
    Save();
    EXPECT_EQ(StoredParams(kExponential), (Numbers{26, 27}));
}

TEST_F(StudyPageTest, AFaultThatIsNoLongerInAPaneIsInNobodysWay) {
    Open();
    Enter("期數1", "0");
    Enter("期數2", "12");
    PressInTree(Qt::Key_Delete);
    EXPECT_EQ(Panes().front(), "pane 1: K線, study 99");
    Save();
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(StoredParams(kAverages), (Numbers{5, 10, 20, 60}));
    EXPECT_EQ(Studies("Trend").front(), (std::vector<StudyType>{kCandles, kUnknown}));
}

TEST_F(StudyPageTest, WhatTheChartDoesNotUseIsDisabledAndSaysSo) {
    Store(0, {{kCandles, kSar, kAverages}, {kVolume}});
    Load();
    const struct {
        int pane, study;
        QString shape;
        bool colour, width, style;
    } cases[] = {
        {0, 0, "K線", false, false, false},     // candlesticks
        {0, 1, "轉向點", true, true, false},    // dots
        {0, 2, "均線1", true, true, true},      // a line
        {1, 0, "成交量", false, false, false},  // volume bars
    };
    Open(kStudies, 0, 1);
    for (const auto& each : cases) {
        ClickStudy(each.pane, each.study);
        const std::pair<QWidget&, bool> controls[] = {
            {Named<QPushButton>(each.shape + " IDS_TADIALOGS-SHEET_COLOUR"), each.colour},
            {Named<QSpinBox>(each.shape + " IDS_TADIALOGS-SHEET_WIDTH"), each.width},
            {Named<QComboBox>(each.shape + " IDS_TADIALOGS-SHEET_STYLE"), each.style},
        };
        for (const auto& [control, used] : controls) {
            EXPECT_EQ(control.isEnabled(), used) << each.shape.toStdString();
            EXPECT_EQ(control.toolTip() == "IDS_TADIALOGS-SHEET_NOT_FOR_KIND", !used);
        }
    }
}

// ---- Defaults ----

TEST_F(StudyPageTest, ARowThatDiffersGoesBackToItsDefault) {
    Open();
    const auto revert = [this](const QString& tip) -> QToolButton& {
        return Named<QToolButton>("IDS_TADIALOGS-SHEET_REVERT" + tip);
    };
    EXPECT_FALSE(revert("_TIP 期數1 5").isVisible());
    Enter("期數1", "x");
    EXPECT_TRUE(revert("_TIP 期數1 5").isVisible());
    PressKey(Qt::Key_Tab);
    PressKey(Qt::Key_Space);
    EXPECT_EQ(Text("期數1"), "5");
    EXPECT_EQ(Faults(), QStringList());
    EXPECT_TRUE(Value("期數1").hasFocus());
    TabTo(Named<QCheckBox>("均線2 IDS_TADIALOGS-SHEET_VISIBILITY"));
    PressKey(Qt::Key_Space);
    EXPECT_TRUE(Sheet().IsEditStudy());
    TabTo(revert("_SHAPE_TIP 均線2"));
    PressKey(Qt::Key_Space);
    EXPECT_FALSE(revert("_SHAPE_TIP 均線2").isVisible());
    EXPECT_FALSE(Sheet().IsEditStudy());
}

TEST_F(StudyPageTest, RestoringAStudyTellsWhatItChangesAndTakesTheStoresDefaults) {
    memory.paramDefaults = Names{"4=7,14,28,56"};
    Load();
    Open();
    EXPECT_EQ(Text("期數1"), "7") << "the group has no settings of its own";
    EXPECT_FALSE(Button("restoreStudyButton").isEnabled());
    Enter("期數1", "8");
    Click(Named<QCheckBox>("均線1 IDS_TADIALOGS-SHEET_VISIBILITY"));
    for (const int answer : {-1, 0, 1}) {
        answer < 0 ? prompts.ExpectCancel(ScriptedPrompts::Kind::YesNo)
                   : prompts.ExpectYesNo(answer == 1);
        ClickButton("restoreStudyButton");
        EXPECT_EQ(prompts.Last().text,
                  "IDS_TADIALOGS-SHEET_ASK_RESTORE_STUDY 移動平均線 期數1: 8 to 7\n均線1 "
                  "IDS_TADIALOGS-SHEET_VISIBILITY: IDS_TADIALOGS-SHEET_INVISIBLE to "
                  "IDS_TADIALOGS-SHEET_VISIBLE");
        EXPECT_EQ(prompts.Last().title, "Terminal");
        EXPECT_EQ(prompts.Last().icon, ui::PromptIcon::Question);
        EXPECT_EQ(prompts.Last().presetAnswer, ui::Answer::No);
        EXPECT_EQ(Text("期數1"), answer == 1 ? "7" : "8");
    }
    EXPECT_FALSE(Sheet().IsEditStudy());
    memory.paramDefaults = Names{"4=9,14,28,56"};  // another terminal's
    ReloadAndGoOn();
    Enter("期數1", "8");
    prompts.ExpectYesNo(true);
    ClickButton("restoreStudyButton");
    EXPECT_EQ(Text("期數1"), "9");
}

TEST_F(StudyPageTest, RestoringAGroupIsForAllOfItsStudiesAndLeavesTheirPlaces) {
    ASSERT_TRUE(DrawInfo().bSetStudyParams(kVolume, {6, 30}));
    ASSERT_TRUE(DrawInfo().bSetStudyParams(kMacd, {11, 26, 9}));
    ASSERT_TRUE(DrawInfo().bSetStudyParams(kBands, {30, 2}));  // not one of the group's
    Open();
    Enter("期數1", "8");
    const QStringList panes = Panes();
    prompts.ExpectYesNo(true);
    ClickButton("restoreGroupButton");
    EXPECT_TRUE(prompts.Last().text.startsWith(
        "IDS_TADIALOGS-SHEET_ASK_RESTORE_GROUP Trend 3 移動平均線\n    期數1: 8 to 5\n成交量\n"));
    EXPECT_EQ(prompts.Last().presetAnswer, ui::Answer::No);
    EXPECT_EQ(Text("期數1"), "5");
    EXPECT_EQ(Panes(), panes);
    Save();
    EXPECT_EQ(StoredParams(kVolume), (Numbers{5, 20}));
    EXPECT_EQ(StoredParams(kMacd), (Numbers{12, 26, 9}));
    EXPECT_EQ(StoredParams(kBands), (Numbers{30, 2}));
}

// ---- Studies in panes ----

TEST_F(StudyPageTest, AFullPaneRefuses) {
    OpenWith({{0, 4, 5, 6, 7, 8, 9, 10}, {kVolume}}, 0, 1);
    EXPECT_EQ(ToldBy([&] { Press(Sheet(), Qt::Key_Insert); }), "IDS_TADIALOGS-SHEET_PANE_FULL 1 8");
    ClickStudy(1, 0);
    prompts.ExpectMessage();
    Press(Sheet(), Qt::Key_Left, Qt::ControlModifier);
    prompts.ExpectMessage();
    Drop(1, 0, 0, 3, true);
    EXPECT_EQ(Panes()[1], "pane 2: 成交量");
    EXPECT_FALSE(Sheet().IsEditStudy());
    // Within the pane there is no need for a place.
    Drop(0, 7, 0, 0, false);
    EXPECT_TRUE(Panes()[0].startsWith("pane 1: 價格通道, K線, 移動平均線"));
    ClickStudy(1, -1);
    for (int i = 0; i < 7; ++i) {
        AddStudy("VWAP");
    }
    EXPECT_EQ(Tree().topLevelItem(1)->childCount(), 8);
    prompts.ExpectMessage();
    Press(Sheet(), Qt::Key_Insert);
    Save();
    EXPECT_EQ(Studies("Trend")[1], (std::vector<StudyType>{16, 11, 11, 11, 11, 11, 11, 11}));
}

TEST_F(StudyPageTest, StudiesMoveByButtonsAndKeys) {
    Open(kStudies, 0, 2);
    ClickButton("downButton");
    EXPECT_EQ(Panes()[0], "pane 1: K線, study 99, 移動平均線");
    EXPECT_EQ(SelectedStudy(), "移動平均線");
    EXPECT_FALSE(Button("downButton").isEnabled());
    EXPECT_FALSE(Button("previousPaneButton").isEnabled());
    ClickButton("nextPaneButton");
    EXPECT_EQ(Panes()[1], "pane 2: 成交量, 移動平均線");
    PressInTree(Qt::Key_Up, Qt::ControlModifier);
    Press(Sheet(), Qt::Key_Up, Qt::ControlModifier);  // not into the pane above
    EXPECT_EQ(Panes()[1], "pane 2: 移動平均線, 成交量");
    for (int i = 0; i < 9; ++i) {
        Press(Sheet(), Qt::Key_Right, Qt::ControlModifier);
    }
    EXPECT_EQ(Panes()[4], "hidden 5: 指數平滑異同移動平均線, 移動平均線");
    EXPECT_EQ(Text("期數1"), "5") << "the moved study stays in the editor";
    EXPECT_EQ(Studies("Trend")[1], std::vector<StudyType>{kVolume});
    Save();
    EXPECT_EQ(
        Studies("Trend"),
        (StudyLists{
            {kCandles, kUnknown}, {kVolume}, {kStochastic, kExponential}, {}, {kMacd, kAverages}}));
    EXPECT_EQ(Changed(), Changes{5});
    std::vector<StudyType> types;
    Names names;
    EXPECT_EQ(Sheet().GetChangeStudy(types, names), 0) << "no study's settings were saved";
}

TEST_F(StudyPageTest, StudiesMoveByDragging) {
    Open(kStudies, 0, 1);
    Drop(0, 1, 0, 1, true);
    Drop(0, 1, 0, 0, true);
    EXPECT_FALSE(Sheet().IsEditStudy()) << "dropped where it was";
    Drop(0, 1, 2, 0, false);
    EXPECT_EQ(Panes()[0], "pane 1: K線, study 99");
    EXPECT_EQ(Panes()[2], "pane 3: 移動平均線, 隨機指標, 指數移動平均線");
    EXPECT_EQ(SelectedStudy(), "移動平均線");
    Drop(2, 0, 2, 1, true);
    EXPECT_EQ(Panes()[2], "pane 3: 隨機指標, 移動平均線, 指數移動平均線");
    Drop(0, 1, 1, -1, false);
    EXPECT_EQ(Panes()[1], "pane 2: 成交量, study 99") << "behind the last one";
    Drop(1, 1, 3, -1, false);
    EXPECT_EQ(Panes()[3], "hidden 4: study 99");
    const QStringList panes = Panes();
    Drop(2, 0, 0, 0, false, [this] {
        Press(Sheet(), Qt::Key_Delete);
        Press(Sheet(), Qt::Key_Escape);
    });
    EXPECT_TRUE(Sheet().isVisible()) << "Escape gives up the drag, not the sheet";
    EXPECT_EQ(Panes(), panes);
    Save();
    EXPECT_EQ(
        Studies("Trend"),
        (StudyLists{
            {kCandles}, {kVolume}, {kStochastic, kAverages, kExponential}, {kUnknown}, {kMacd}}));
}

TEST_F(StudyPageTest, TheFirstPaneKeepsItsLastStudyOnBothPages) {
    OpenWith({{kCandles}, {}, {kVolume}}, 0, 1);
    const std::function<void()> attempts[] = {
        [this] { PressInTree(Qt::Key_Delete); },
        [this] { ClickButton("removeButton"); },
        [this] { ClickButton("nextPaneButton"); },
        [this] { Drop(0, 0, 2, 0, true); },
        [this] {
            ClickStudy(0, -1);
            PressKey(Qt::Key_Down, Qt::ControlModifier);
        },
        [this] {
            ClickStudy(1, -1);
            ClickButton("upButton");
        },
        [this] {
            Turn(kGroups);
            ClickStudy(1, -1);
            ClickButton("moveUpButton");
        },
        [this] {
            ClickStudy(0, -1);
            PressKey(Qt::Key_Down, Qt::ControlModifier);
        },
    };
    for (const auto& attempt : attempts) {
        EXPECT_EQ(ToldBy([&] { attempt(); }), "IDS_TADIALOGS-SHEET_FIRST_PANE");
        EXPECT_EQ(Panes().mid(0, 2), (QStringList{"pane 1: K線", "pane 2: "}));
        EXPECT_EQ(Studies("Trend")[0], std::vector<StudyType>{kCandles});
        EXPECT_FALSE(Sheet().IsEditStudy());
    }
    // It may give way to another one, and the pane to a pane with studies.
    Turn(kStudies);
    Drop(2, 0, 0, 0, true);
    Drop(0, 0, 2, -1, false);
    EXPECT_EQ(Panes()[0], "pane 1: 成交量");
    ClickStudy(2, -1);
    PressKey(Qt::Key_Up, Qt::ControlModifier);
    PressKey(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(Panes()[0], "pane 1: K線");
}

TEST_F(StudyPageTest, TheNumberOfPanesLeavesStudiesAndSelection) {
    OpenWith({{kCandles}, {kVolume}}, 2, 0);
    ShowCount().setFocus();
    PressKey(Qt::Key_A, Qt::ControlModifier);
    for (const char* digit : {"1", "0"}) {
        QTest::keyClicks(&ShowCount(), digit);
        EXPECT_EQ(Tree().CurrentPlace(), (sheet::Place{2, -1})) << "of a pane that is not shown";
        if (*digit == '1') {
            EXPECT_EQ(Panes().mid(0, 3),
                      (QStringList{"pane 1: K線", "hidden 2: 成交量", "hidden 3: "}));
        }
    }
    EXPECT_EQ(Tree().topLevelItemCount(), 10);
    EXPECT_EQ(Panes()[9], "pane 10: ");
    ClickStudy(9, -1);
    AddStudy("ATR");
    EXPECT_EQ(Repository().GetStudyCountByGroupName("Trend"), 3);
    PressKey(Qt::Key_Right, Qt::ControlModifier);  // there is no pane behind it
    Save();
    EXPECT_EQ(memory.showCounts[0], 10);
    EXPECT_EQ(Studies("Trend")[9], std::vector<StudyType>{41});
    const StudyLists before = Studies("Trend");
    Open();
    ShowCount().setValue(1);
    Save();
    EXPECT_EQ(Repository().GetStudyCountByGroupName("Trend"), 1);
    EXPECT_EQ(Studies("Trend"), before);
}

TEST_F(StudyPageTest, ThePickerIsWorkedFromItsSearchBox) {
    Open(kStudies, 1, 0);
    OnDialog([](ui::DialogBase& dialog) {
        auto& list = Find<QTreeWidget>(dialog, "studyList");
        auto& search = Find<QLineEdit>(dialog, "searchEdit");
        const auto selected = [&list] { return list.currentItem()->text(1); };
        EXPECT_EQ(list.topLevelItemCount(), 4);
        EXPECT_EQ(selected(), "K");
        Press(dialog, Qt::Key_Down);
        EXPECT_EQ(selected(), "MA");
        for (int i = 0; i < 12; ++i) {  // over the headings of the next categories
            QTest::keyClick(i % 2 == 0 ? static_cast<QWidget*>(&search) : &list, Qt::Key_Down);
            EXPECT_NE(selected(), "") << i;
            EXPECT_TRUE(Find<QPushButton>(dialog, "okButton").isEnabled()) << i;
        }
        EXPECT_EQ(selected(), "CMF");
        QTest::keyClicks(&search, "rsi");
        EXPECT_EQ(selected(), "RSI") << "the first hit";
        EXPECT_TRUE(list.topLevelItem(0)->isHidden()) << "a category without hits";
        EXPECT_FALSE(list.topLevelItem(2)->isHidden());
        Press(dialog, Qt::Key_Down);
        EXPECT_EQ(selected(), "StochRSI");
        Press(dialog, Qt::Key_Down);
        EXPECT_EQ(selected(), "StochRSI") << "the last hit";
        Press(dialog, Qt::Key_Up);
        EXPECT_TRUE(search.hasFocus());

        QTest::keyClicks(&search, "zz");
        EXPECT_EQ(Find<QLabel>(dialog, "nothingLabel").text(),
                  "IDS_TADIALOGS-SHEET_NOTHING_FOUND rsizz");
        EXPECT_FALSE(Find<QPushButton>(dialog, "okButton").isEnabled());
        Press(dialog, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
        for (const char* name : {"平滑異同", "convergence DIV", "ＭＡＣＤ"}) {
            search.clear();
            TypeText(search, name);
            EXPECT_EQ(selected(), "MACD") << name;
        }
        search.clear();
        EXPECT_EQ(Find<QLabel>(dialog, "nothingLabel").text(), "");
        Press(dialog, Qt::Key_PageUp);
        EXPECT_EQ(selected(), "K") << "above it there is a heading alone";
        Press(dialog, Qt::Key_Escape);
    });
    ClickButton("addButton");
    EXPECT_EQ(Panes()[1], "pane 2: 成交量");

    OnDialog([](ui::DialogBase& dialog) {
        auto& list = Find<QTreeWidget>(dialog, "studyList");
        const QPoint obv = list.visualItemRect(list.topLevelItem(1)->child(1)).center();
        const QPoint heading = list.visualItemRect(list.topLevelItem(1)).center();
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, heading);
        EXPECT_TRUE(dialog.isVisible()) << "a heading is no study";
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, obv);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, obv);
    });
    ClickButton("addButton");
    EXPECT_EQ(Panes()[1], "pane 2: 成交量, 能量潮");
    EXPECT_EQ(Text("均線期數"), "10") << "the new study is in the editor";
    PressInTree(Qt::Key_Delete);
    EXPECT_EQ(SelectedStudy(), "成交量") << "the one before it";
    EXPECT_FALSE(Sheet().IsEditStudy());
}

TEST_F(StudyPageTest, ANewStudyTakesColoursThatAreFreeInItsPane) {
    Open();
    const auto add = [&](int pane, const char* abbreviation) {
        ClickStudy(pane, -1);
        OnDialog([abbreviation](ui::DialogBase& dialog) {
            QTest::keyClicks(&Find<QLineEdit>(dialog, "searchEdit"), abbreviation);
            Press(dialog, Qt::Key_Return);
        });
        ClickButton("addButton");
    };
    const auto coloursOf = [](const CString& group, StudyType type) {
        std::vector<std::uint32_t> colours;
        for (const StudyShape& shape : DrawInfo(group).vecGetStudyShapes(type)) {
            colours.push_back(shape.colour);
        }
        return colours;
    };
    constexpr StudyType kBands = 7;
    constexpr StudyType kRsi = 24;
    constexpr StudyType kKd = 23;
    const auto averages = coloursOf("Trend", kAverages);
    const auto bandsBefore = coloursOf("Trend", kBands);
    const auto rsiBefore = coloursOf("Trend", kRsi);
    const auto kdBefore = coloursOf("Trend", kKd);
    add(0, "BBands");  // beside the moving averages, which have four colours
    add(3, "RSI");     // into an empty pane
    add(0, "KD");      // stands in pane 3 too
    PressKey(Qt::Key_Return);
    const auto bands = coloursOf("Trend", kBands);
    EXPECT_EQ(bands[1], bandsBefore[1]) << "the grey one is free";
    std::set<std::uint32_t> all(averages.begin(), averages.end());
    all.insert(bands.begin(), bands.end());
    EXPECT_EQ(all.size(), averages.size() + bands.size());
    EXPECT_EQ(coloursOf("Trend", kAverages), averages);
    EXPECT_EQ(coloursOf("Trend", kRsi), rsiBefore);
    EXPECT_EQ(coloursOf("Trend", kKd), kdBefore);
}

/// In a process of its own, whose user may use the studies of the default group only.
class StudyPickerDeathTest : public DialogFixture {
protected:
    [[noreturn]] static void ShowPicker() {
        static terminal::TerminalChartModule module;
        Services services = CSyncInfo::GetSettingCFG().GetServices();
        services.chartModule = &module;
        CSyncInfo::GetSettingCFG().SetServices(services);
        CTaSettingSheet sheet("caption", nullptr, 1, "", 0, 0, 0);
        Show(sheet);
        DialogDriver driver;
        driver.Expect([](QWidget& dialog) {
            QStringList studies;
            for (QTreeWidgetItemIterator item(&Find<QTreeWidget>(dialog, "studyList"));
                 *item != nullptr; ++item) {
                studies.append((*item)->text(1));
            }
            studies.removeAll("");  // headings
            std::fprintf(stderr, "<%s>", qPrintable(studies.join(' ')));
            std::_Exit(0);
        });
        Click(Find<QPushButton>(*sheet.GetActivePage(), "addButton"));
        std::_Exit(1);
    }
};

TEST_F(StudyPickerDeathTest, OffersWhatTheUserMayUse) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    entitlement.denied = {Function::AdvancedStudies};
    EXPECT_EXIT(ShowPicker(), testing::ExitedWithCode(0), "<K MA VOL MACD KD>");
}

// ---- Room ----

/// The real texts.
class TranslatedQuotes : public MemoryQuotes {
public:
    CString LangGetLangString(const CString& key) const override {
        return ui::FromQString(qtTrId(key.c_str()));
    }
};

/// In a process of its own, on the screen of a small notebook computer, in a font of 150 %.
class SmallScreenDeathTest : public SheetFixture,
                             public testing::WithParamInterface<terminal::Language::Id> {
protected:
    SmallScreenDeathTest() {
        testing::FLAGS_gtest_death_test_style = "threadsafe";
        Write(Path("screen.json"),
              R"({"synchronousWindowSystemEvents": false, "windowFrameMargins": true, "screens": [
                  {"name": "small", "x": 0, "y": 0, "width": 1366, "height": 768,
                   "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    }

    void UseLanguageAndFont() {
        m_language.Select(GetParam());
        BKQuoteInterface::SetBKInterface(&m_translated);
        QFont large = QApplication::font();
        large.setPointSizeF(large.pointSizeF() * 1.5);
        QApplication::setFont(large);
    }

    /// Buttons have their room, and what takes the focus can be brought into view.
    void RequireReachable(QWidget& window) {
        EXPECT_TRUE(window.screen()->availableGeometry().contains(window.frameGeometry()));
        for (QWidget* widget : window.findChildren<QWidget*>()) {
            if (!widget->isVisible() || widget->isWindow() || !widget->isEnabled()) {
                continue;
            }
            SCOPED_TRACE(widget->metaObject()->className() + widget->objectName().toStdString());
            if (qobject_cast<QAbstractButton*>(widget) != nullptr) {
                const QSize least = widget->minimumSizeHint();
                EXPECT_EQ(widget->size().boundedTo(least), least) << "cut";
            }
            if ((widget->focusPolicy() & Qt::TabFocus) != 0) {
                for (QWidget* up = widget->parentWidget(); up != nullptr; up = up->parentWidget()) {
                    if (auto* area = qobject_cast<QScrollArea*>(up)) {
                        area->ensureWidgetVisible(widget);
                    }
                }
                EXPECT_FALSE(widget->visibleRegion().isEmpty()) << "cannot be seen";
            }
        }
    }

    [[noreturn]] void CheckRoom() {
        UseLanguageAndFont();
        EXPECT_EQ(QApplication::primaryScreen()->size(), QSize(1366, 768));
        Store(0, {{kAverages, kIchimoku, kSar}, {kStochasticRsi, kMacd}});
        Load();
        Open(kGroups, 0, 0);
        RequireReachable(Sheet());
        Turn(kStudies);
        for (QTreeWidgetItemIterator item(&Tree()); *item != nullptr; ++item) {
            Tree().setCurrentItem(*item);
            if (QAbstractSpinBox* field = View().findChild<QAbstractSpinBox*>()) {
                field->setFocus();
                QTest::keyClicks(field, "99999");
            }
            QCoreApplication::processEvents();
            RequireReachable(Sheet());
        }
        OnDialog([this](ui::DialogBase& dialog) {
            RequireReachable(dialog);
            dialog.reject();
        });
        ClickButton("addButton");
        std::_Exit(HasFailure() ? 1 : 0);
    }

private:
    terminal::Language m_language;
    TranslatedQuotes m_translated;
};

TEST_P(SmallScreenDeathTest, EverythingIsReachable) {
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + Path("screen.json").toUtf8());
    EXPECT_EXIT(CheckRoom(), testing::ExitedWithCode(0), "");
    qputenv("QT_QPA_PLATFORM", platform);
}

INSTANTIATE_TEST_SUITE_P(Languages, SmallScreenDeathTest,
                         testing::Values(terminal::Language::TraditionalChinese,
                                         terminal::Language::English));

}  // namespace
}  // namespace ta::test
