// The group page: what it shows, and what the repository, the store and the sheet hold after the
// user's actions; alone and in a settings sheet.

#include "platform/Text.h"
#include "sheet/GroupRows.h"
#include "sheet/ScreenLines.h"
#include "tests/sheet/SheetFixture.h"

#include <QLabel>
#include <QLineEdit>
#include <QTest>

namespace ta::test {
namespace {

using ui::Answer;
using ui::PromptIcon;

const CString kName = text::FromUtf8("許功蓋");
constexpr const char* kEditButtons[] = {"addButton", "modifyButton", "deleteButton",
                                        "importButton"};

class GroupPageTest : public SheetFixture {
protected:
    void OpenGroups(const CString& group = "Trend") { Open(kGroups, 0, 0, group); }
    QStringList Screens() { return Texts(InFront<QListWidget>("screenList")); }
    QString Hint() { return InFront<QLabel>("hintLabel").text(); }
    void ExpectQuestion(const QString& text, Answer preset) {
        EXPECT_EQ(prompts.Last().text, text);
        EXPECT_EQ(prompts.Last().icon, PromptIcon::Question);
        EXPECT_EQ(prompts.Last().title, "");
        EXPECT_EQ(prompts.Last().presetAnswer, preset);
    }
};

// ---- What is shown ----

TEST_F(GroupPageTest, ShowsTheGroupsAndTheStudiesOfTheActiveOne) {
    OpenGroups(kName);
    EXPECT_EQ(Texts(Groups()), (QStringList{"Trend", "Swing", "許功蓋"}));
    EXPECT_EQ(Panes(), QStringList{"pane 1: 指數平滑異同移動平均線"});
    ClickRow(Groups(), 0);
    PressKey(Qt::Key_Down);
    EXPECT_EQ(Sheet().GetActiveGroup(), "Swing");
    EXPECT_EQ(Panes().size(), 2);
    EXPECT_EQ(Hint(), "");
    EXPECT_EQ(TakeWrites(), Lines{}) << "looking changes nothing";
}

TEST_F(GroupPageTest, ScreensAreListedOnceWithTheirNumberOfViews) {
    memory.viewGroups[5] = {{"Wide###1", 1}, {"Main", 2}, {"Wide###2", 3}, {"Wide", 4}};
    memory.viewGroups[8] = {{kName, 1}};
    OpenGroups();
    EXPECT_EQ(Screens(), (QStringList{"Main", "Wide [3]"}));
    ClickRow(Groups(), 1);
    EXPECT_EQ(Screens(), QStringList{});
    ClickRow(Groups(), 2);
    EXPECT_EQ(Screens(), QStringList{"許功蓋"});
    // They stay with their group whatever its place and name, and asking for them, which commits
    // what is pending, is not done in the middle of edits.
    const int commits = memory.packCount;
    DragRow(Groups(), 2, 0);
    EXPECT_EQ(Screens(), QStringList{"許功蓋"});
    ClickRow(Groups(), 1);
    EXPECT_EQ(Screens(), (QStringList{"Main", "Wide [3]"}));
    EXPECT_EQ(memory.packCount, commits);
    EXPECT_EQ(sheet::ScreenLines({{"b", 1}, {"B", 2}, {"b", 3}, {"a", 4}}),
              (Names{"B", "a", "b [2]"}));
}

// ---- Editing the list ----

TEST_F(GroupPageTest, AddingAGroup) {
    OpenGroups();
    AddGroup("功\\[新");
    const CString name = text::FromUtf8("功\\[新");
    EXPECT_EQ(GroupNames(), (Names{"Trend", "Swing", kName, name}));
    EXPECT_EQ(Studies(name), (StudyLists{{0, 4}, {16}, {23}, {22}}));
    EXPECT_EQ(SelectedGroup(), "功\\[新");
    EXPECT_EQ(Changed(), Changes{0}) << "the smallest free number";
    EXPECT_EQ(Sheet().IsEditGroup(), 1);
    EXPECT_EQ(Sheet().IsDragList(), 0);
    // The order cannot be changed any more, but groups can still be edited.
    EXPECT_EQ(Hint(), "IDS_TECHVIEW-STRING_GROUPSETTING_DISABLE_DRAG");
    DragRow(Groups(), 0, 2);
    PressKey(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(Texts(Groups()).front(), "Trend");
    EXPECT_EQ(Sheet().IsDragList(), 0);
    EXPECT_TRUE(Button("addButton").isEnabled());
    // A name that is taken: told, and the dialog comes again.
    EnterName("", "Swing");
    prompts.ExpectMessage();
    OnDialog([](ui::DialogBase& dialog) { Press(dialog, Qt::Key_Escape); });
    ClickButton("addButton");
    EXPECT_EQ(prompts.Last().text, "IDS_TECHVIEW-STRING_GROUPIMPORT_EXIST_ALREADY");
    EXPECT_EQ(prompts.Last().icon, PromptIcon::Warning);
    EXPECT_EQ(GroupNames().size(), 4U);
}

TEST_F(GroupPageTest, TheMaximum) {
    memory.maxCount = 11;
    while (memory.names->size() < 11) {
        memory.names->push_back("Group " + std::to_string(memory.names->size()));
    }
    Load();
    OpenGroups();
    EXPECT_EQ(ToldBy([&] { ClickButton("addButton"); }), "IDS_TECHVIEW-STRING_GROUPSETTING_MAXCNT");
    EXPECT_EQ(GroupNames().size(), 11U);
    EXPECT_TRUE(sheet::IsFull(12, 12) && sheet::IsFull(13, 12) && sheet::IsFull(0, 0));
    EXPECT_FALSE(sheet::IsFull(11, 12) || sheet::IsFull(1000, -1)) << "a negative one is none";
}

TEST_F(GroupPageTest, RenamingKeepsPlaceNumberAndStudies) {
    OpenGroups("Swing");
    RenameGroup("Renamed");
    EXPECT_EQ(GroupNames(), (Names{"Trend", "Renamed", kName}));
    EXPECT_EQ(Repository().GetUniNumByGroupName("Renamed"), 3);
    EXPECT_EQ(Studies("Renamed"), (StudyLists{{kCandles}, {kBands, kAverages}}));
    EXPECT_EQ(TakeWrites(), Lines{"SaveTAGroupNameList([Trend Swing 許功蓋])"})
        << "saved before it was renamed";
    EXPECT_EQ(SelectedGroup(), "Renamed");
    EXPECT_EQ(Sheet().GetActiveGroup(), "Renamed");
    EXPECT_EQ(Changed(), (Changes{3, 1})) << "the number, and the place with another name";
    EXPECT_EQ(Sheet().IsEditGroup(), 1);
}

TEST_F(GroupPageTest, RenamingToANameThatIsTakenOrItsOwnAsksAgainForTheOldOne) {
    OpenGroups();
    EnterName("Trend", "Trend");
    prompts.ExpectMessage();
    prompts.Meanwhile([this] { EXPECT_EQ(prompts.Last().text, "<Trend> exists"); });
    EnterName("Trend", "許功蓋");
    prompts.ExpectMessage();
    OnDialog([](ui::DialogBase& dialog) {
        EXPECT_EQ(Find<QLineEdit>(dialog, "nameEdit").text(), "Trend");
        Press(dialog, Qt::Key_Escape);
    });
    ClickButton("modifyButton");
    EXPECT_EQ(prompts.Last().text, "<許功蓋> exists");
    EXPECT_EQ(GroupNames(), (Names{"Trend", "Swing", kName}));
    EXPECT_EQ(Sheet().IsEditGroup(), 0);
    EXPECT_EQ(TakeWrites(), Lines{});
}

TEST_F(GroupPageTest, DeletingSelectsTheNextGroup) {
    OpenGroups("Swing");
    for (const bool closed : {true, false}) {
        closed ? prompts.ExpectCancel(ScriptedPrompts::Kind::YesNo) : prompts.ExpectYesNo(false);
        ClickButton("deleteButton");
        ExpectQuestion("IDS_TECHVIEW-STRING_GROUPSETTING_CHKDELETE - 「Swing」", Answer::No);
        EXPECT_EQ(GroupNames().size(), 3U);
        EXPECT_EQ(Sheet().IsEditGroup(), 0);
    }
    prompts.ExpectYesNo(true);
    ClickButton("deleteButton");
    EXPECT_EQ(GroupNames(), (Names{"Trend", kName}));
    EXPECT_EQ(TakeWrites(), Lines{"SaveTAGroupNameList([Trend 許功蓋])"});
    EXPECT_EQ(Repository().GetUniNumByGroupName("Swing"), 3) << "only the name has gone";
    EXPECT_EQ(SelectedGroup(), "許功蓋");
    EXPECT_EQ(Sheet().GetActiveGroup(), kName);
    EXPECT_EQ(Changed(), Changes{3});
}

TEST_F(GroupPageTest, DeletingTheLastRowSelectsTheDefaultGroupAndTheOnlyGroupStays) {
    OpenGroups(kName);
    prompts.ExpectYesNo(true);
    ClickButton("deleteButton");
    EXPECT_EQ(SelectedGroup(), "Trend");
    prompts.ExpectYesNo(true);
    PressKey(Qt::Key_Delete);
    EXPECT_EQ(GroupNames(), Names{"Swing"});
    EXPECT_FALSE(Button("deleteButton").isEnabled());
    ClickButton("deleteButton");
    PressKey(Qt::Key_Delete);
    EXPECT_EQ(GroupNames(), Names{"Swing"});
    EXPECT_EQ(Changed(), (Changes{8, 5}));
}

TEST_F(GroupPageTest, TheLastGroupStaysWhenTheOthersWentMeanwhile) {
    OpenGroups();
    prompts.ExpectYesNo(true);
    prompts.Meanwhile([this] {
        memory.names = Names{"Trend"};
        memory.reloadFlag = true;
    });
    prompts.ExpectChoice(0);
    ClickButton("deleteButton");
    AwaitPrompts();
    EXPECT_EQ(GroupNames(), Names{"Trend"});
    EXPECT_EQ(Sheet().IsEditGroup(), 0);
}

// ---- Order ----

TEST_F(GroupPageTest, DraggingSwitchesEditingOffUntilTheEnd) {
    OpenGroups();
    DragRow(Groups(), 0, 2);
    EXPECT_EQ(Texts(Groups()), (QStringList{"Swing", "許功蓋", "Trend"}));
    EXPECT_EQ(SelectedGroup(), "Trend");
    EXPECT_EQ(Panes().size(), 5) << "the studies of the group that was dragged";
    EXPECT_EQ(Sheet().IsDragList(), 1);
    EXPECT_EQ(Sheet().IsEditGroup(), 0);
    EXPECT_EQ(Hint(), "IDS_TECHVIEW-STRING_GROUPSETTING_DISABLE_EDIT");
    EXPECT_EQ(GroupNames().front(), "Trend") << "stored when the page is saved";
    for (const int key : {Qt::Key_Insert, Qt::Key_F2, Qt::Key_Delete}) {
        PressKey(key);
    }
    Changes changes{7};
    Sheet().GetChangeGroupList(changes);
    EXPECT_EQ(changes, Changes{}) << "any group may stand elsewhere";

    // Back where it was: not dragged, but groups still cannot be edited.
    PressKey(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(Sheet().IsDragList(), 1);
    PressKey(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(Sheet().IsDragList(), 0);
    for (const char* name : kEditButtons) {
        EXPECT_FALSE(Button(name).isEnabled()) << name;
    }
    EXPECT_TRUE(Button("exportButton").isEnabled());
}

TEST_F(GroupPageTest, ADragOverAListThatIsNoLongerTrueCountsAsAnEdit) {
    OpenGroups();
    Repository().DeleteGroupSetting(kName);
    DragRow(Groups(), 0, 1);
    EXPECT_EQ(Sheet().IsEditGroup(), 1);
    EXPECT_EQ(Sheet().IsDragList(), 0);
}

TEST_F(GroupPageTest, AloneItSavesTheOrderAndThenTheStudies) {
    CTASetGroup page;
    Show(page);
    auto& groups = Find<ui::DragListBox>(page, "groupList");
    auto& tree = Find<sheet::StudyTree>(page, "studyTree");
    DragRow(groups, 0, 2);
    tree.setCurrentItem(tree.topLevelItem(0)->child(0));
    Click(Find<QPushButton>(page, "moveDownButton"));
    EXPECT_EQ(Studies("Trend").front().front(), kAverages) << "stored at once";
    Repository().SetStudyListByGroupName("Trend", {{kCandles}});
    StudyLists atOrder;
    store.RunBefore("SaveTAGroupNameList", 1 + store.Calls("SaveTAGroupNameList"),
                    [&] { atOrder = Studies("Trend"); });
    EXPECT_EQ(page.SaveChange(), 1);
    EXPECT_EQ(atOrder, StudyLists{{kCandles}}) << "the order goes first";
    EXPECT_EQ(Studies("Trend").front(), (std::vector<StudyType>{kAverages, kCandles, kUnknown}));
    EXPECT_EQ(GroupNames(), (Names{"Swing", kName, "Trend"}));
    EXPECT_EQ(page.IsDragList(), 1) << "for the creator of the sheet";
    // What another terminal did to the list stays.
    memory.names = Names{"Trend", kName, "Theirs"};
    memory.reloadFlag = true;
    page.SaveChange();
    EXPECT_EQ(GroupNames(), (Names{kName, "Trend", "Theirs"}));
}

// ---- Studies ----

TEST_F(GroupPageTest, AStudyMovesWithinItsPaneAndAPaneWithItsStudies) {
    OpenGroups();
    ClickStudy(0, 0);
    ClickButton("moveDownButton");
    EXPECT_EQ(Panes().front(), "pane 1: 移動平均線, K線, study 99");
    EXPECT_EQ(SelectedStudy(), "K線");
    EXPECT_EQ(Studies("Trend").front(), (std::vector<StudyType>{kAverages, kCandles, kUnknown}))
        << "stored at once";
    EXPECT_EQ(Changed(), Changes{5});
    PressKey(Qt::Key_Up, Qt::ControlModifier);
    PressKey(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(Studies("Trend").front().front(), kCandles);
    ClickStudy(1, -1);
    PressKey(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(Studies("Trend")[0], std::vector<StudyType>{kVolume});
    EXPECT_EQ(Studies("Trend")[1].front(), kCandles);
}

TEST_F(GroupPageTest, EditsOfTheStudyPageAreShownAndMovedOn) {
    OpenGroups();
    Turn(kStudies);
    ClickStudy(0, 0);
    ClickButton("downButton");
    Turn(kGroups);
    EXPECT_EQ(Panes().front(), "pane 1: 移動平均線, K線, study 99");
    EXPECT_EQ(Studies("Trend").front().front(), kCandles) << "not saved yet";
    ClickStudy(2, 0);
    ClickButton("moveDownButton");
    EXPECT_EQ(Studies("Trend")[0].front(), kAverages);
    EXPECT_EQ(Studies("Trend")[2], (std::vector<StudyType>{kExponential, kStochastic}));
    Turn(kStudies);
    EXPECT_EQ(Panes()[2], "pane 3: 指數移動平均線, 隨機指標") << "the study page has no older ones";
}

// ---- Group files ----

TEST_F(GroupPageTest, ImportReportsEveryGroupAndDropsTheDraftsOfThoseInTheFile) {
    OpenGroups("Swing");
    Turn(kStudies);
    ClickStudy(0, 0);
    ShowCount().setValue(7);
    Sheet().SetActiveGroup("Trend");
    Turn(kGroups);
    Turn(kStudies);
    ClickStudy(0, 1);
    Enter("期數1", "8");
    ShowCount().setValue(9);
    Turn(kGroups);
    ClickRow(Groups(), 1);
    ExpectGroupFile("Trend");
    OnDialog([this](ui::DialogBase& dialog) {
        memory.viewGroups[3] = {{"Later", 1}};
        // The file's group to the second place.
        Press(dialog, Qt::Key_Down, Qt::ControlModifier);
        Press(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(ToldBy([&] { ClickButton("importButton"); }, ui::PromptIcon::None),
              "IDS_TECHVIEW-STRING_GROUPIMPORT_IMPORT_OK\nadded 0, overwritten 1");
    EXPECT_EQ(GroupNames(), (Names{"Swing", "Trend", kName}));
    EXPECT_EQ(SelectedGroup(), "Trend") << "the group that now has the place";
    EXPECT_EQ(Sheet().GetActiveGroup(), "Trend");
    EXPECT_EQ(Panes(), QStringList{"pane 1: 隨機指標"});
    EXPECT_EQ(Changed(), (Changes{3, 5, 8, 0, 1}));
    EXPECT_EQ(Sheet().IsEditGroup(), 1);
    ClickRow(Groups(), 0);
    EXPECT_EQ(Screens(), QStringList{"Later"});
    Sheet().SaveChange();
    EXPECT_EQ(StoredParams(kAverages), (Numbers{5, 10, 20, 60}));
    EXPECT_EQ(Repository().GetStudyCountByGroupName("Trend"), 1);
    EXPECT_EQ(Repository().GetStudyCountByGroupName("Swing"), 7) << "was not in the file";
}

TEST_F(GroupPageTest, AFileThatIsNotThereIsToldAndACancelledPickerIsNot) {
    OpenGroups();
    prompts.ExpectCancel(ScriptedPrompts::Kind::OpenFile);
    ClickButton("importButton");
    EXPECT_EQ(prompts.Last().text, "*.TASG") << "the filter";
    prompts.ExpectFile(Path("missing.TASG"));
    EXPECT_EQ(ToldBy([&] { ClickButton("importButton"); }),
              "IDS_TECHVIEW-STRING_GROUPIMPORT_NOSELECT_FILE");
    EXPECT_EQ(TakeWrites(), Lines{});
}

// ---- Closing ----

TEST_F(GroupPageTest, TheCloseTimeQuestionAndItsThreeAnswers) {
    const struct {
        Answer answer;
        bool open;
        int asked, save;
        Names names;
    } cases[] = {
        {Answer::None, true, 0, 0, {"Swing", kName, "Trend"}},
        {Answer::No, false, 1, 0, {"Trend", "Swing", kName}},
        {Answer::Yes, false, 1, 1, {"Swing", kName, "Trend"}},
    };
    for (const auto& each : cases) {
        OpenGroups();
        DragRow(Groups(), 0, 2);
        each.answer == Answer::None ? prompts.ExpectCancel(ScriptedPrompts::Kind::YesNo)
                                    : prompts.ExpectYesNo(each.answer == Answer::Yes);
        const int commits = memory.packCount;
        PressKey(Qt::Key_Escape);
        ExpectQuestion("IDS_TECHVIEW-STRING_GROUPSETTING_SAVE_CHECK", Answer::Yes);
        EXPECT_EQ(Sheet().isVisible(), each.open);
        EXPECT_EQ(Sheet().IsAskBeforeClose(), each.asked);
        EXPECT_EQ(Sheet().IsAlwaysSave(), each.save);
        EXPECT_EQ(each.open ? Texts(Groups()).last() : "Trend", "Trend") << "nothing was dropped";
        EXPECT_EQ(GroupNames(), each.open ? Names(*memory.names) : each.names);
        EXPECT_EQ(memory.packCount > commits, each.save == 1);
        if (each.open) {
            EXPECT_EQ(GroupNames().front(), "Trend") << "nothing was saved";
        }
    }
}

}  // namespace
}  // namespace ta::test
