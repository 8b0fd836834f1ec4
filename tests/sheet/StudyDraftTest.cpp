// The study page's drafts: kept between studies and groups, asked for at the end, and standing on
// what another terminal has saved.

#include "tests/sheet/StudyPageFixture.h"

#include <QTest>

namespace ta::test {
namespace {

using ui::PromptIcon;
using StudyDraftTest = StudyPageFixture;

// ---- Drafts ----

TEST_F(StudyDraftTest, DraftsOutliveTheChangeOfStudyAndGroup) {
    Open();
    Enter("期數1", "8");
    ClickStudy(1, 0);
    Enter("短期", "9999");
    ClickStudy(0, 1);
    EXPECT_EQ(Text("期數1"), "8");
    PressInTree(Qt::Key_Right, Qt::ControlModifier);
    ShowGroup("Swing");
    EXPECT_EQ(Panes(), (QStringList{"pane 1: K線", "pane 2: 布林通道, 移動平均線"}));
    ClickStudy(1, 1);
    EXPECT_EQ(Text("期數1"), "5") << "another group's";
    Enter("期數1", "9");

    EXPECT_EQ(Sheet().GetShownStudies("Trend")[1][1], kAverages) << "for the group page";
    EXPECT_EQ(Page().DraftStudies("Swing"), nullptr);
    EXPECT_EQ(Page().DraftShowCount("Trend"), -1);
    Save();
    EXPECT_TRUE(Sheet().isVisible());
    EXPECT_EQ(Sheet().GetActiveGroup(), "Trend") << "the group with the fault";
    EXPECT_EQ(SelectedStudy(), "成交量");
    EXPECT_TRUE(Value("短期").hasFocus());
    EXPECT_EQ(Text("短期"), "9999");
    EXPECT_EQ(StoredParams(kAverages, "Swing"), (Numbers{5, 10, 20, 60}));
    Enter("短期", "4");
    Save();
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(StoredParams(kAverages), (Numbers{8, 10, 20, 60}));
    EXPECT_EQ(StoredParams(kVolume), (Numbers{4, 20}));
    EXPECT_EQ(StoredParams(kAverages, "Swing"), (Numbers{9, 10, 20, 60}));
    EXPECT_EQ(Studies("Trend")[1], (std::vector<StudyType>{kVolume, kAverages}));
    EXPECT_EQ(Changed(), (Changes{5, 3}));
    std::vector<StudyType> types;
    Names names;
    Sheet().GetChangeStudy(types, names);
    EXPECT_EQ(types, (std::vector<StudyType>{kAverages, kVolume, kAverages}))
        << "once for each group";
}

TEST_F(StudyDraftTest, ADraftFollowsItsGroupAndGoesWithIt) {
    Open();
    Enter("期數1", "8");
    ClickStudy(0, 0);
    PressInTree(Qt::Key_Delete);
    Repository().ModifyGroupName("Trend", "Renamed");
    ShowGroup("Renamed");
    EXPECT_EQ(Panes()[0], "pane 1: 移動平均線, study 99");
    ClickStudy(0, 0);
    EXPECT_EQ(Text("期數1"), "8");
    EXPECT_EQ(Page().DraftStudies("Trend"), nullptr);

    Names left{"Swing"};
    Repository().SetGroupNameList(left);
    EXPECT_FALSE(Sheet().IsEditStudy());
    Page().OnSetActive();
    EXPECT_EQ(Sheet().GetActiveGroup(), "Swing");
}

TEST_F(StudyDraftTest, ListsThatAnotherPageHasStoredAreNoLongerDrafted) {
    Open();
    Enter("期數1", "8");
    PressInTree(Qt::Key_Up, Qt::ControlModifier);
    ASSERT_NE(Page().DraftStudies("Trend"), nullptr);
    Repository().SetStudyListByGroupName("Trend", {{kAverages}, {kBands}});
    Sheet().OnStudiesStored("Trend");
    EXPECT_EQ(Page().DraftStudies("Trend"), nullptr);
    Page().OnSetActive();
    EXPECT_EQ(Panes()[1], "pane 2: 布林通道");
    EXPECT_EQ(Text("期數1"), "8") << "the parameters are";
}

// ---- Closing ----

TEST_F(StudyDraftTest, CancelWithoutChangesAsksNothing) {
    Open();
    Enter("期數1", "8");
    Enter("期數1", "5");
    PressInTree(Qt::Key_Down, Qt::ControlModifier);
    Press(Sheet(), Qt::Key_Up, Qt::ControlModifier);
    Press(Sheet(), Qt::Key_Escape);
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(Sheet().IsAskBeforeClose(), 0);
    EXPECT_FALSE(Sheet().IsEditStudy());
}

TEST_F(StudyDraftTest, CancelAndNoLeavesEverything) {
    Open();
    Enter("期數1", "0");  // a fault is a change, too
    prompts.ExpectYesNo(false);
    Press(Sheet(), Qt::Key_Escape);
    EXPECT_EQ(prompts.Last().text, "IDS_TECHVIEW-STRING_GROUPSETTING_SAVE_CHECK");
    EXPECT_EQ(prompts.Last().icon, PromptIcon::Question);
    EXPECT_EQ(prompts.Last().title, "");
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(Sheet().IsAlwaysSave(), 0);
    EXPECT_EQ(Sheet().IsAskBeforeClose(), 1);
    EXPECT_EQ(StoredParams(kAverages), (Numbers{5, 10, 20, 60}));
    EXPECT_EQ(memory.packCount, 0);
}

TEST_F(StudyDraftTest, CancelAndYesSaves) {
    Open();
    Enter("期數1", "8");
    prompts.ExpectYesNo(true);
    Press(Sheet(), Qt::Key_Escape);
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(Sheet().IsAlwaysSave(), 1);
    EXPECT_EQ(StoredParams(kAverages), (Numbers{8, 10, 20, 60}));
    EXPECT_EQ(memory.params[0], Names{"4=8,10,20,60"});
    EXPECT_EQ(Changed(), Changes{5});
}

TEST_F(StudyDraftTest, CancelAndYesWithAFaultStaysThere) {
    Open();
    Enter("期數2", "0");
    ClickStudy(1, 0);
    prompts.ExpectYesNo(true);
    Press(Sheet(), Qt::Key_Escape);
    EXPECT_TRUE(Sheet().isVisible());
    EXPECT_EQ(Sheet().IsAskBeforeClose(), 0) << "the question is still open";
    EXPECT_TRUE(Value("期數2").hasFocus());
    Enter("期數2", "11");
    prompts.ExpectYesNo(true);
    Press(Sheet(), Qt::Key_Escape);
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(StoredParams(kAverages), (Numbers{5, 11, 20, 60}));
}

TEST_F(StudyDraftTest, AnAnswerThatWasGivenIsNotAskedForAgain) {
    Open();
    Enter("期數1", "8");
    Sheet().SetAlwaysSaveFlag(0);
    Page().reject();
    EXPECT_EQ(StoredParams(kAverages), (Numbers{5, 10, 20, 60}));
}

TEST_F(StudyDraftTest, AloneItWorksOnItsGroup) {
    CTASetParam page;
    page.SetInitialSelection("Swing", 0, 1, 2);
    Show(page);
    page.OnSetActive();
    auto* const field = page.findChild<CTaParamSettingView*>()->findChild<QAbstractSpinBox*>();
    QTest::keyClick(field, Qt::Key_Up);
    prompts.ExpectYesNo(true);
    page.reject();
    EXPECT_EQ(StoredParams(kAverages, "Swing"), (Numbers{6, 10, 20, 60}));
    EXPECT_TRUE(page.IsEditStudy());
    page.reject();  // nothing to ask
}

TEST_F(StudyDraftTest, WhatTheChartModuleRefusesIsTold) {
    MemoryChartModule module;
    module.studyInfos[1].params = {{"P", "P", 5, 1, 9, 1, 0}};
    UseModule(module);
    Load();
    auto& drawInfo = dynamic_cast<MemoryDrawInfo&>(DrawInfo());
    drawInfo.studyParams[kAverages] = {4};
    Open();
    EXPECT_EQ(Text("P"), "4");
    Enter("P", "6");
    drawInfo.FailOnCall("bSetStudyParams", CallPlan::kEveryCall);
    prompts.ExpectMessage();
    EXPECT_EQ(Page().SaveStudy(), 0);
    EXPECT_TRUE(prompts.Last().text.contains("移動平均線"));
    drawInfo.Reset();
    EXPECT_EQ(Page().SaveStudy(), 1) << "the edit is still there";
    EXPECT_EQ(drawInfo.studyParams[kAverages], Numbers{6});
}

// ---- Another terminal saves ----

TEST_F(StudyDraftTest, DraftsStandOnTheNewStateAfterAReload) {
    Open();
    Enter("期數1", "8");
    ClickStudy(1, 0);
    memory.params[0] = Names{"4=6,12,24,72", "16=7,14"};
    memory.showCounts[0] = 4;
    Store(0, {{kAverages}, {kVolume, kBands}});
    ReloadAndGoOn();
    EXPECT_EQ(Panes()[1], "pane 2: 成交量, 布林通道");
    EXPECT_EQ(SelectedStudy(), "成交量");
    EXPECT_EQ(Text("短期"), "7");
    EXPECT_EQ(ShowCount().value(), 4);
    ClickStudy(0, 0);
    EXPECT_EQ(Text("期數1") + ' ' + Text("期數2"), "8 12");
    Save();
    EXPECT_EQ(StoredParams(kAverages), (Numbers{8, 12, 24, 72})) << "what was edited, and no more";
    EXPECT_EQ(Studies("Trend")[1], (std::vector<StudyType>{kVolume, kBands}));
}

TEST_F(StudyDraftTest, ARuleThatTheNewStateBreaksIsShownBeforeItIsSaved) {
    Open(2, 2);
    Enter("短期", "20");
    memory.params[0] = Names{"5=9,15"};
    ReloadAndGoOn();
    EXPECT_EQ(Faults(), QStringList{kShortBelowLong});
    Save();
    EXPECT_TRUE(Sheet().isVisible());
    EXPECT_EQ(StoredParams(kExponential), (Numbers{9, 15}));
}

TEST_F(StudyDraftTest, AnEditInTheMomentOfAReloadOverwritesNothing) {
    Open();
    Store(0, {{kBands}, {kVolume, kAverages}});
    memory.reloadFlag = true;
    prompts.ExpectChoice(0);
    PressInTree(Qt::Key_Delete);
    EXPECT_EQ(Panes()[0], "pane 1: 布林通道") << "the study to delete is no longer there";
    AwaitPrompts();
    EXPECT_FALSE(Sheet().IsEditStudy());
}

TEST_F(StudyDraftTest, AReloadInTheMidstOfSavingLosesNoEdit) {
    Open();
    Enter("期數1", "8");
    ShowCount().setValue(4);
    store.RunBefore("SaveTAStudyShowCount", 1 + store.Calls("SaveTAStudyShowCount"), [this] {
        memory.params[0] = Names{"4=6,12,24,72"};
        memory.reloadFlag = true;
    });
    prompts.ExpectChoice(0);
    Save();
    AwaitPrompts();
    EXPECT_TRUE(Sheet().isVisible()) << "the user is told";
    EXPECT_EQ(StoredParams(kAverages), (Numbers{6, 12, 24, 72}));
    EXPECT_EQ(Text("期數1") + ' ' + Text("期數2"), "8 12");
    Save();
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(StoredParams(kAverages), (Numbers{8, 12, 24, 72}));
}

TEST_F(StudyDraftTest, DraftsOfGroupsThatAReloadTakesAwayAreDropped) {
    Open();
    Repository().AddGroupSetting("Mine");  // not saved; its number is 0
    ShowGroup("Mine");
    ClickStudy(0, 1);
    Enter("期數1", "8");
    ShowGroup("Swing");
    ClickStudy(1, 1);
    Enter("期數1", "9");
    // Elsewhere a group was added, which has the number, and another one renamed.
    memory.names = Names{"Trend", "Swing 2", "Theirs"};
    memory.uniNums = {{0, 5}, {1, 3}, {2, 0}};
    ReloadAndGoOn();
    EXPECT_EQ(Page().DraftStudies("Theirs"), nullptr);
    ShowGroup("Theirs");
    ClickStudy(0, 1);
    EXPECT_EQ(Text("期數1"), "5");
    Save();
    EXPECT_EQ(StoredParams(kAverages, "Theirs"), (Numbers{5, 10, 20, 60}));
    EXPECT_EQ(StoredParams(kAverages, "Swing 2"), (Numbers{9, 10, 20, 60}));
    EXPECT_EQ(Changed(), Changes{3});
}

}  // namespace
}  // namespace ta::test
