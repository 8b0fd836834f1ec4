// The editing session under both pages: drafts kept between studies and groups, what is saved and
// what given back at the end, and another terminal that saves meanwhile.

#include "platform/Text.h"
#include "settings/Messages.h"
#include "tests/sheet/SheetFixture.h"

#include <QLineEdit>
#include <QPointer>
#include <QTest>

#include <new>

namespace ta::test {
namespace {

class SessionTest : public SheetFixture {
protected:
    void ShowGroup(const CString& group) {
        Turn(kGroups);
        Sheet().SetActiveGroup(group);
        Turn(kStudies);
    }
    void StartAgain() {
        EndSheet();
        StoreAtFirst();
        Load();
    }
    /// Another chart module, with a parameter "P" from 1 to 9 that has this value.
    MemoryDrawInfo& StoreOneToNine(double value) {
        static auto& module = *new MemoryChartModule;
        module.studyInfos[1].params = {{"P", "P", 5, 1, 9, 1, 0}};
        UseModule(module);
        Load();
        auto& drawInfo = dynamic_cast<MemoryDrawInfo&>(DrawInfo());
        drawInfo.studyParams[kAverages] = {value};
        return drawInfo;
    }
    /// What the last reload told, as language keys.
    QStringList News() { return prompts.Last().text.split("\n\n"); }
    /// Another terminal has stored these groups, with their numbers.
    void CommitElsewhere(const std::vector<std::pair<CString, int>>& groups) {
        memory.names = Names();
        memory.uniNums.clear();
        for (const auto& [name, number] : groups) {
            memory.uniNums[static_cast<unsigned>(memory.names->size())] = number;
            memory.names->push_back(name);
        }
        memory.reloadFlag = true;
    }
};

const QString kChanged = "IDS_TADIALOGS-SHEET_CHANGED_ELSEWHERE";
const QString kLostList = "IDS_TADIALOGS-SHEET_LOST_GROUP_EDITS";
const QString kKept = "IDS_TADIALOGS-SHEET_KEPT_STUDY_EDITS";

TEST_F(SessionTest, DraftsOutliveTheChangeOfStudyAndGroup) {
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
    Turn(kGroups);
    ClickRow(Groups(), 0);
    EXPECT_EQ(Panes()[1], "pane 2: 成交量, 移動平均線") << "the group page shows drafts";
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

TEST_F(SessionTest, ADraftFollowsItsGroupAndGoesWithIt) {
    Open();
    Enter("期數1", "8");
    ClickStudy(0, 0);
    PressInTree(Qt::Key_Delete);
    Turn(kGroups);
    RenameGroup("Renamed");
    Turn(kStudies);
    EXPECT_EQ(Panes()[0], "pane 1: 移動平均線, study 99");
    ClickStudy(0, 0);
    EXPECT_EQ(Text("期數1"), "8");
    Turn(kGroups);
    prompts.ExpectYesNo(true);
    ClickButton("deleteButton");
    Turn(kStudies);
    EXPECT_EQ(Sheet().GetActiveGroup(), "Swing");
    // A new group of an old name begins anew.
    Turn(kGroups);
    AddGroup("Renamed");
    Turn(kStudies);
    EXPECT_EQ(Panes()[0], "pane 1: K線, 移動平均線");
    ClickStudy(0, 1);
    EXPECT_EQ(Text("期數1"), "5");
}

// ---- The end ----

TEST_F(SessionTest, CancelWithoutChangesAsksNothing) {
    Open();
    Enter("期數1", "8");
    Enter("期數1", "5");
    PressInTree(Qt::Key_Down, Qt::ControlModifier);
    PressKey(Qt::Key_Up, Qt::ControlModifier);
    const int commits = memory.packCount;
    PressKey(Qt::Key_Escape);
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(Sheet().IsAskBeforeClose(), 0);
    EXPECT_FALSE(Sheet().IsEditStudy());
    EXPECT_EQ(memory.packCount, commits);
}

TEST_F(SessionTest, AReloadThatCannotBeToldForWantOfMemorySaysSo) {
    Open();
    CommitElsewhere({{"Swing", 3}, {"Trend", 5}});
    Repository().ReloadTASetting();
    quotes.Reset();
    quotes.RunBefore("LangGetLangString", 1, [] { throw std::bad_alloc(); });
    prompts.ExpectMessage();
    AwaitPrompts();
    EXPECT_EQ(prompts.Last().text, "IDS_TECHVIEW-STRING_MEMORY_ERR");
    EXPECT_TRUE(Sheet().isVisible());
}

TEST_F(SessionTest, CancelThatMeetsAnotherPartysCommitAsksNothing) {
    Open(kGroups);
    CommitElsewhere({{"Swing", 3}, {"Trend", 5}, {"New", 7}});
    PressKey(Qt::Key_Escape);
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(Sheet().IsAskBeforeClose(), 0);
    EXPECT_EQ(*memory.names, (Names{"Swing", "Trend", "New"}));
}

TEST_F(SessionTest, NoGivesRepositoryAndStoreBackAndYesSavesBothPages) {
    const StudyLists before = Studies("Trend");
    for (const bool yes : {false, true}) {
        Open(kGroups, 0, 0);
        ClickStudy(0, 0);
        ClickButton("moveDownButton");
        AddGroup("New");
        Turn(kStudies);
        ClickStudy(0, 1);
        Enter("期數1", "9");
        prompts.ExpectYesNo(yes);
        const int commits = memory.packCount;
        Cancel();
        EXPECT_FALSE(Sheet().isVisible());
        EXPECT_GT(memory.packCount, commits);
        EXPECT_EQ(Studies("Trend") == before, !yes);
        EXPECT_EQ(GroupNames().size(), yes ? 4U : 3U);
        EXPECT_EQ(memory.names, GroupNames()) << "stored";
        EXPECT_EQ(memory.studyLists[std::pair(0U, CString("StudyTypeLogKey01"))].front(),
                  yes ? kAverages : kCandles);
        EXPECT_EQ(memory.params[3], yes ? Names{"4=9,10,20,60"} : Names());
    }
}

TEST_F(SessionTest, NoTakesBackAnOrderThatAnExportHasStoredAndNotWhatWasPendingBefore) {
    Repository().SetTechWndKeyByGroupName("Swing", 9);
    Open(kGroups, 0, 0);
    DragRow(Groups(), 0, 1);
    OnDialog([](ui::DialogBase& dialog) { dialog.reject(); });
    ClickButton("exportButton");
    EXPECT_EQ(memory.names->front(), "Swing");
    // There and back in the order that the repository has by now.
    Groups().setFocus();
    PressKey(Qt::Key_Down, Qt::ControlModifier);
    PressKey(Qt::Key_Up, Qt::ControlModifier);
    prompts.ExpectYesNo(false);
    Cancel();
    EXPECT_EQ(memory.names, (Names{"Trend", "Swing", text::FromUtf8("許功蓋")}));
    EXPECT_EQ(GroupNames(), memory.names);
    EXPECT_EQ(memory.wndShowKeys[1], 9);
}

TEST_F(SessionTest, YesStaysOnAFaultAndTheNextCancelAsksAgain) {
    Open();
    Enter("期數1", "5000");
    Turn(kGroups);
    AddGroup("New");
    for (int round = 0; round < 2; ++round) {
        prompts.ExpectYesNo(true);
        Cancel();
        EXPECT_TRUE(Sheet().isVisible());
        EXPECT_EQ(Sheet().GetActiveIndex(), 1);
        EXPECT_TRUE(Value("期數1").hasFocus());
        EXPECT_EQ(Sheet().IsAlwaysSave(), 0);
        ShowGroup("New");
    }
    prompts.ExpectCancel(ScriptedPrompts::Kind::YesNo);
    Cancel();
    EXPECT_TRUE(Sheet().isVisible()) << "no answer";
    prompts.ExpectYesNo(false);
    Cancel();
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(GroupNames().size(), 3U);
}

TEST_F(SessionTest, AStoredValueThatCannotBeAndThatNobodyEditedIsInNobodysWay) {
    const MemoryDrawInfo& drawInfo = StoreOneToNine(40);
    Open();
    EXPECT_EQ(Faults(), QStringList{kRange + " 1 9"});
    ShowCount().setValue(5);
    Save();
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(drawInfo.studyParams.at(kAverages), Numbers{40});
}

TEST_F(SessionTest, WhatTheChartModuleRefusesIsToldAndStaysDrafted) {
    MemoryDrawInfo& drawInfo = StoreOneToNine(4);
    Open();
    EXPECT_EQ(Text("P"), "4");
    Enter("P", "6");
    drawInfo.FailOnCall("bSetStudyParams", CallPlan::kEveryCall);
    const int commits = memory.packCount;
    EXPECT_EQ(ToldBy([&] { Save(); }), "IDS_TADIALOGS-SHEET_REFUSED 移動平均線");
    EXPECT_TRUE(Sheet().isVisible());
    EXPECT_EQ(Text("P"), "6") << "the edit is still there";
    EXPECT_EQ(memory.packCount, commits);
    // The sheet goes on: a cancel asks, and a save that is not refused ends it.
    prompts.ExpectCancel(ScriptedPrompts::Kind::YesNo);
    Cancel();
    drawInfo.Reset();
    Save();
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(drawInfo.studyParams[kAverages], Numbers{6});
}

// ---- Another terminal saves ----

TEST_F(SessionTest, AnEditInTheMomentOfAReloadOverwritesNothing) {
    Open();
    Store(0, {{kBands}, {kVolume, kAverages}});
    memory.reloadFlag = true;
    prompts.ExpectChoice(0);
    PressInTree(Qt::Key_Delete);
    EXPECT_EQ(Panes()[0], "pane 1: 布林通道") << "the study to delete is no longer there";
    AwaitPrompts();
    EXPECT_EQ(SelectedStudy(), "移動平均線") << "the same study elsewhere";
    EXPECT_FALSE(Sheet().IsEditStudy());
}

TEST_F(SessionTest, ACommitInTheMidstOfSavingWaitsUntilAllIsStored) {
    Open();
    Enter("期數1", "8");
    ShowCount().setValue(4);
    ClickStudy(0, 0);
    PressInTree(Qt::Key_Delete);
    store.RunBefore("SaveTAStudyShowCount", 1 + store.Calls("SaveTAStudyShowCount"),
                    [this] { memory.reloadFlag = true; });
    Save();
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(memory.params[0], Names{"4=8,10,20,60"});
    EXPECT_EQ(Studies("Trend")[0], (std::vector<StudyType>{kAverages, kUnknown}));
    EXPECT_EQ(Repository().GetStudyCountByGroupName("Trend"), 4);
}

TEST_F(SessionTest, ACommitBeforeSavingIsToldAndEachEditStandsOnTheNewState) {
    Open();
    Enter("期數1", "8");
    memory.params[0] = Names{"4=6,12,24,72"};
    memory.showCounts[0] = 5;
    memory.reloadFlag = true;
    prompts.ExpectChoice(0);
    Save();
    EXPECT_TRUE(Sheet().isVisible());
    AwaitPrompts();
    EXPECT_EQ(prompts.Last().icon, ui::PromptIcon::Warning);
    EXPECT_EQ(prompts.Last().title, "Terminal");
    EXPECT_EQ(prompts.Last().choices,
              (QStringList{"IDS_TADIALOGS-SHEET_GO_ON", "IDS_TADIALOGS-SHEET_CLOSE"}));
    EXPECT_EQ(News(), (QStringList{kChanged, kKept}));
    EXPECT_EQ(Text("期數1") + ' ' + Text("期數2"), "8 12");
    EXPECT_EQ(ShowCount().value(), 5);
    Save();
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(StoredParams(kAverages), (Numbers{8, 12, 24, 72}));
}

TEST_F(SessionTest, EscapeInTheReloadChoiceGoesOnAndASecondReloadIsToldAgain) {
    Open(kGroups, 0, 0);
    DragRow(Groups(), 0, 2);
    for (const int choice : {-1, 0}) {
        memory.names->push_back("Theirs" + std::to_string(choice));
        prompts.ExpectChoice(choice);
        Load();
        AwaitPrompts();
        EXPECT_EQ(News(), choice < 0 ? (QStringList{kChanged, kLostList}) : QStringList{kChanged});
        EXPECT_TRUE(Sheet().isVisible());
        EXPECT_EQ(Texts(Groups()).size(), static_cast<int>(memory.names->size()));
        EXPECT_EQ(Sheet().IsDragList() + Sheet().IsEditGroup(), 0);
        EXPECT_TRUE(Button("addButton").isEnabled());
    }
    DragRow(Groups(), 0, 1);
    EXPECT_EQ(Sheet().IsDragList(), 1);
}

TEST_F(SessionTest, AReloadIsToldAfterTheDialogOfAPageWhoseEditIsKeptOrTakenBack) {
    for (const int choice : {0, 1}) {
        Open(kGroups, 0, 0);
        prompts.ExpectChoice(choice);
        OnDialog([this, choice](ui::DialogBase& dialog) {
            memory.names = Names{"Trend", "Theirs"};
            Load();
            QCoreApplication::processEvents();
            EXPECT_EQ(prompts.Waiting(), 1U);
            TypeText(Find<QLineEdit>(dialog, "nameEdit"), QString("Mine%1").arg(choice));
            Press(dialog, Qt::Key_Return);
        });
        ClickButton("addButton");
        AwaitPrompts();
        EXPECT_EQ(Sheet().isVisible(), choice == 0);
        EXPECT_EQ(Sheet().IsEditGroup(), 1) << "done on the new state";
        EXPECT_EQ(GroupNames(),
                  choice == 0 ? (Names{"Trend", "Theirs", "Mine0"}) : (Names{"Trend", "Theirs"}));
    }
}

TEST_F(SessionTest, StudiesThatTheGroupPageStoredAreKeptLikeOtherEdits) {
    Open(kGroups, 0, 0);
    ClickStudy(0, 0);
    ClickButton("moveDownButton");
    Turn(kStudies);
    ClickStudy(1, 0);
    PressInTree(Qt::Key_Delete);
    ShowCount().setValue(4);
    Turn(kGroups);
    AddGroup("Mine");  // stores the studies of both edits
    EXPECT_TRUE(Studies("Trend")[1].empty());
    ReloadAndGoOn();
    EXPECT_EQ(News(), (QStringList{kChanged, kLostList, kKept}));
    EXPECT_EQ(Studies("Trend")[0].front(), kCandles);
    EXPECT_EQ(Panes()[0], "pane 1: 移動平均線, K線, study 99");
    Save();
    EXPECT_EQ(Studies("Trend")[0].front(), kAverages);
    EXPECT_TRUE(Studies("Trend")[1].empty());
    EXPECT_EQ(Repository().GetStudyCountByGroupName("Trend"), 4);
    EXPECT_EQ(Changed(), (Changes{5, 0}));
}

TEST_F(SessionTest, AGroupThatAnotherTerminalRenamesStaysSelectedWithItsStudy) {
    for (const unsigned page : {kGroups, kStudies}) {
        Open(kStudies, 2, 2);
        Enter("短期", "7");
        Turn(page);
        if (page == kGroups) {
            ClickStudy(2, 1);
        }
        CommitElsewhere({{"Swing", 3}, {"Their name", 5}, {"Trend", 8}});
        Store(1, {{kCandles}, {kExponential, kVolume}, {}, {}, {}});
        ReloadAndGoOn();
        EXPECT_EQ(Sheet().GetActiveGroup(), "Their name");
        EXPECT_EQ(SelectedStudy(), "指數移動平均線");
        EXPECT_EQ(Panes()[1], "pane 2: 指數移動平均線, 成交量");
        Save();
        EXPECT_EQ(StoredParams(kExponential, "Their name").front(), 7);
        EXPECT_NE(StoredParams(kExponential, "Trend").front(), 7);
        StartAgain();
    }
}

TEST_F(SessionTest, DraftsOfGroupsThatAreGoneAreToldAndFallOnNoOther) {
    Open();
    Turn(kGroups);
    AddGroup("Mine");
    Turn(kStudies);
    ClickStudy(0, 1);
    Enter("期數1", "9");
    ShowGroup("Swing");
    ShowCount().setValue(9);
    memory.names = Names{"Trend", "Theirs"};
    memory.uniNums = {{0, 5}, {1, 0}};  // the number of "Mine", which was not stored
    memory.showCounts = {{0, 3}, {1, 2}};
    memory.params.clear();
    prompts.ExpectChoice(0);
    Load();
    Turn(kGroups);  // asks for drafts before the user is told
    AwaitPrompts();
    ASSERT_EQ(News().size(), 3);
    EXPECT_TRUE(News()[2].contains("Mine") && News()[2].contains("Swing"));
    EXPECT_EQ(Sheet().GetActiveGroup(), "Trend");
    EXPECT_FALSE(Sheet().IsEditStudy());
    Save();
    EXPECT_EQ(StoredParams(kAverages, "Theirs").front(), 5);
    EXPECT_EQ(Repository().GetStudyCountByGroupName("Theirs"), 2);
}

TEST_F(SessionTest, ClosingAfterAReloadDropsTheDraftsAndStoresNothing) {
    Open();
    Enter("期數1", "9");
    const int commits = memory.packCount;
    prompts.ExpectChoice(1);
    Load();
    AwaitPrompts();
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(Sheet().IsAlwaysSave(), 0);
    EXPECT_EQ(memory.packCount, commits);
    EXPECT_EQ(StoredParams(kAverages).front(), 5);
}

// ---- What a commit of another terminal must not break ----

TEST_F(SessionTest, TheFieldOfAGroupThatIsRenamedOrDeletedElsewhereLivesWhileItIsTypedInto) {
    const std::vector<std::pair<CString, int>> commits[] = {{{"Renamed", 5}, {"Swing", 3}},
                                                            {{"Theirs", 3}}};
    for (const auto& groups : commits) {
        Open();
        const QPointer<QAbstractSpinBox> field = &Value("期數1");
        Click(*field);
        CommitElsewhere(groups);
        prompts.ExpectChoice(0);
        Press(Sheet(), Qt::Key_8);
        ASSERT_NE(field, nullptr) << groups[0].first;
        QTest::keyClick(field, Qt::Key_9);  // tells nobody any more
        AwaitPrompts();
        EXPECT_EQ(field, nullptr);
        EXPECT_EQ(Sheet().GetActiveGroup(), groups[0].first);
        EXPECT_FALSE(Sheet().IsEditStudy()) << "it fell on no other field";
        StartAgain();
    }
}

TEST_F(SessionTest, ANameThatComesBackBeginsAnew) {
    const std::pair<std::function<void()>, QString> cases[] = {
        {[this] { AddGroup("Swing"); }, "pane 1: K線, 移動平均線"},
        {[this] { RenameGroup("Swing"); }, "pane 1: K線, 移動平均線, study 99"},
        {[this] { ImportGroup("Swing"); }, "pane 1: 隨機指標"},
    };
    for (const auto& [takeName, panes] : cases) {
        Open(kGroups, 0, 0, "Swing");
        CommitElsewhere({{"Trend", 5}});
        prompts.ExpectChoice(0);
        RenameGroup("Too late");  // which drafts a group that is no longer there
        AwaitPrompts();
        EXPECT_EQ(Texts(Groups()), QStringList{"Trend"});
        takeName();
        ClickRow(Groups(), Groups().count() - 1);
        EXPECT_EQ(Panes()[0], panes);
        StartAgain();
    }
}

TEST_F(SessionTest, AnImportStoresWhatWasEditedBefore) {
    Open(kGroups, 0, 0);
    AddGroup("Mine");
    ImportGroup("File");
    ReloadAndGoOn();
    EXPECT_EQ(News(), QStringList{kChanged});
    EXPECT_EQ(GroupNames().size(), 5U);
    ImportGroup("Another");
    AddGroup("Later");
    ReloadAndGoOn();
    EXPECT_EQ(News(), (QStringList{kChanged, kLostList}));
    EXPECT_EQ(GroupNames().back(), "Another");
}

TEST_F(SessionTest, RowsOfAnOldStateAreNotStoredAsTheOrder) {
    Open(kGroups, 0, 0);
    DragRow(Groups(), 0, 2);
    CommitElsewhere({{"Trend", 5}, {"Theirs", 9}, {"Swing", 3}});
    prompts.ExpectChoice(0);
    OnDialog([](ui::DialogBase& dialog) { dialog.reject(); });
    ClickButton("exportButton");
    AwaitPrompts();
    EXPECT_EQ(GroupNames(), (Names{"Trend", "Theirs", "Swing"}));
    EXPECT_EQ(memory.names, GroupNames());
}

TEST_F(SessionTest, WhatIsNoReloadIsNotTold) {
    Open();
    Enter("期數1", "8");
    Repository().SendMsg2AllTechView(kGroupChangeMessage, 0);  // a group was changed
    QCoreApplication::processEvents();
    EXPECT_TRUE(Sheet().IsEditStudy());
    Turn(kGroups);
    AddGroup("Mine");
    Save();
    CommitElsewhere({{"Theirs", 9}});
    Load();  // when the sheet is closed
    EXPECT_EQ(Sheet().IsEditGroup(), 1) << "the creator of the sheet asks now";
    EXPECT_EQ(Changed(), (Changes{0, 5}));
}

TEST_F(SessionTest, NewsBeforeTheSheetShowsOrWhileTheChoiceStandsIsTold) {
    CTaSettingSheet sheet("caption", nullptr, kStudies, "Trend", 0, 0, 2);
    Load();
    QCoreApplication::processEvents();
    prompts.ExpectChoice(0);
    Show(sheet);
    AwaitPrompts();
    EXPECT_EQ(News(), QStringList{kChanged});
    sheet.hide();

    Open();
    Enter("期數1", "8");
    prompts.ExpectChoice(0);
    prompts.Meanwhile([this] {
        EXPECT_EQ(News(), (QStringList{kChanged, kKept}));
        CommitElsewhere({{"Theirs", 9}});
        Repository().ReloadTASetting();
    });
    prompts.ExpectChoice(0);
    Load();
    AwaitPrompts();
    ASSERT_EQ(News().size(), 2);
    EXPECT_TRUE(News()[1].contains("LOST_STUDY_EDITS Trend"));
}

TEST_F(SessionTest, GroupsAreComparedWithTheirNamesWhenTheSheetWasMade) {
    Open();
    CommitElsewhere({{"Trend", 5}, {"Renamed", 3}, {"Theirs", 8}});
    ReloadAndGoOn();
    EXPECT_EQ(Changed(), (Changes{1, 2}));
}

TEST_F(SessionTest, CancelAsksForDraftsOfAPageThatWasNeverShown) {
    Open(kGroups, 0, 0);
    ClickStudy(0, 0);
    ClickButton("moveDownButton");
    ReloadAndGoOn();  // leaves the draft, and no edit of the list
    prompts.ExpectYesNo(false);
    Cancel();
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(Studies("Trend")[0].front(), kCandles);
}

TEST_F(SessionTest, WhatAPageCannotSaveAfterYesTheSheetSaves) {
    Open(kGroups, 0, 0);
    AddGroup("New");
    prompts.ExpectYesNo(true);
    store.RunBefore("SaveTAGroupNameList", 1 + store.Calls("SaveTAGroupNameList"),
                    [] { throw std::bad_alloc(); });
    EXPECT_EQ(ToldBy([&] { Cancel(); }), "IDS_TECHVIEW-STRING_MEMORY_ERR");
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(Sheet().IsAlwaysSave(), 1);
    EXPECT_EQ(memory.names->back(), "New");
}

}  // namespace
}  // namespace ta::test
