// The study page's drafts: kept between studies and groups, asked for at the end, and standing on
// what another terminal has saved.

#include "tests/sheet/StudyPageFixture.h"

#include <QTest>

namespace ta::test {
namespace {

using StudyDraftTest = StudyPageFixture;

TEST_F(StudyDraftTest, DraftsOutliveTheChangeOfStudyAndGroup) {
    Open();
    Enter("期數1", "8");
    ClickStudy(1, 0);
    Enter("短期", "9999");
    ClickStudy(0, 1);
    EXPECT_EQ(Text("期數1"), "8");
    PressInTree(Qt::Key_Right, Qt::ControlModifier);
    ShowGroup("Swing");
    ClickStudy(1, 1);
    EXPECT_EQ(Text("期數1"), "5") << "another group's";
    Enter("期數1", "9");

    EXPECT_EQ(Sheet().GetShownStudies("Trend")[1][1], kAverages) << "for the group page";
    Save();
    EXPECT_TRUE(Sheet().isVisible());
    EXPECT_EQ(Sheet().GetActiveGroup(), "Trend") << "the group with the fault";
    EXPECT_EQ(SelectedStudy(), "成交量");
    EXPECT_TRUE(Value("短期").hasFocus());
    EXPECT_EQ(StoredParams(kAverages, "Swing"), (Numbers{5, 10, 20, 60}));
    Enter("短期", "4");
    Save();
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(StoredParams(kAverages), (Numbers{8, 10, 20, 60}));
    EXPECT_EQ(StoredParams(kVolume), (Numbers{4, 20}));
    EXPECT_EQ(StoredParams(kAverages, "Swing"), (Numbers{9, 10, 20, 60}));
    EXPECT_EQ(Studies("Trend")[1], (std::vector<StudyType>{kVolume, kAverages}));
    EXPECT_EQ(Changed(), (Changes{5, 3}));
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

}  // namespace
}  // namespace ta::test
