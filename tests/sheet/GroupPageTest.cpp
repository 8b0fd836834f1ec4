// The group page: what it shows, and what the repository, the store and the sheet hold after the
// user's actions; alone and in a settings sheet.

#include "platform/Text.h"
#include "platform/ui/DragListBox.h"
#include "sheet/GroupRows.h"
#include "sheet/ScreenLines.h"
#include "sheet/TAGroupEditDlg.h"
#include "sheet/TASetGroup.h"
#include "sheet/TASetParam.h"
#include "sheet/TaSettingSheet.h"
#include "tests/sheet/SheetFixture.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <memory>

namespace ta::test {
namespace {

using ui::PromptIcon;
using Kind = ScriptedPrompts::Kind;
using Lines = std::vector<std::string>;
using Changes = std::vector<unsigned>;

const CString kName = text::FromUtf8("許功蓋");
const QString kEditingOff = "IDS_TECHVIEW-STRING_GROUPSETTING_DISABLE_EDIT";
const QString kDraggingOff = "IDS_TECHVIEW-STRING_GROUPSETTING_DISABLE_DRAG";

class GroupPageTest : public SheetFixture {
protected:
    GroupPageTest() {
        memory.names = Names{"Trend", kName, "Volume"};
        memory.uniNums = {{0, 5}, {1, 3}, {2, 8}};
        memory.studyLists[{0, "StudyTypeLogKey01"}] = {0, 4};
        memory.studyLists[{0, "StudyTypeLogKey02"}] = {16};
        memory.studyLists[{0, "StudyTypeLogKey03"}] = {999, 23};
        memory.studyLists[{1, "StudyTypeLogKey01"}] = {22};
        memory.studyLists[{2, "StudyTypeLogKey01"}] = {23, 22};
        memory.showCounts = {{0, 2}, {1, 1}, {2, 1}};
        Load();
    }

    /// The page alone.
    CTASetGroup& Open() {
        m_alone = std::make_unique<CTASetGroup>();
        Show(*m_alone);
        TakeWrites();
        return *m_alone;
    }
    /// The page in a sheet, in front.
    CTASetGroup& OpenInSheet(const CString& group = "Trend") {
        m_sheet = std::make_unique<CTaSettingSheet>("caption", nullptr, 0, group, 0, 0, 0);
        Show(*m_sheet);
        TakeWrites();
        return Page();
    }
    CTaSettingSheet& Sheet() { return *m_sheet; }
    CTASetGroup& Page() {
        return m_alone != nullptr ? *m_alone : *m_sheet->findChild<CTASetGroup*>();
    }
    /// The window of the page, where the keys go.
    ui::DialogBase& Window() {
        return m_alone != nullptr ? static_cast<ui::DialogBase&>(*m_alone) : *m_sheet;
    }
    /// To the page's window, which gets active again when it has closed a dialog.
    void PressKey(int key, Qt::KeyboardModifiers modifiers = {}) {
        Window().activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &Window(); }));
        Press(Window(), key, modifiers);
    }
    /// The newest call that writes to the store.
    std::string LastWrite() {
        const Lines writes = TakeWrites();
        return writes.empty() ? "none" : writes.back();
    }
    Changes Changed() {
        Changes changes;
        Sheet().GetChangeGroupList(changes);
        return changes;
    }

    ui::DragListBox& Groups() { return Find<ui::DragListBox>(Page(), "groupList"); }
    QTreeWidget& Tree() { return Find<QTreeWidget>(Page(), "studyTree"); }
    QPushButton& Button(const char* name) { return Find<QPushButton>(Page(), name); }
    void ClickButton(const char* name) { Click(Button(name)); }
    QString Hint() { return Find<QLabel>(Page(), "hintLabel").text(); }
    QString Selected() { return Groups().currentItem()->text(); }
    QStringList Screens() { return Texts(Find<QListWidget>(Page(), "screenList")); }
    /// Which of the buttons add, modify, delete, import, export, up and down are enabled.
    std::string Enabled() {
        std::string enabled;
        for (const char* name : {"addButton", "modifyButton", "deleteButton", "importButton",
                                 "exportButton", "moveUpButton", "moveDownButton"}) {
            enabled += Button(name).isEnabled() ? 'x' : '.';
        }
        return enabled;
    }
    /// "pane 1: K線圖, 移動平均線" for each pane.
    QStringList Panes() {
        QStringList panes;
        for (int pane = 0; pane < Tree().topLevelItemCount(); ++pane) {
            const QTreeWidgetItem& node = *Tree().topLevelItem(pane);
            QStringList studies;
            for (int i = 0; i < node.childCount(); ++i) {
                studies.append(node.child(i)->text(0));
            }
            panes.append(node.text(0) + ": " + studies.join(", "));
        }
        return panes;
    }
    void ClickStudy(int pane, int study) {
        QTreeWidgetItem* item = Tree().topLevelItem(pane);
        item = study < 0 ? item : item->child(study);
        QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {},
                          Tree().visualItemRect(item).center());
    }

    /// An edit of the tree that the page does not know of.
    void ExchangeFirstStudies() {
        QTreeWidgetItem& node = *Tree().topLevelItem(0);
        node.insertChild(1, node.takeChild(0));
    }

    /// Exchanges the first two studies on the study page, and comes back.
    void ExchangeOnStudyPage() {
        auto& page = *Sheet().findChild<CTASetParam*>();
        ASSERT_TRUE(Sheet().SetActivePage(page));
        auto& tree = Find<QTreeWidget>(page, "studyTree");
        tree.setCurrentItem(tree.topLevelItem(0)->child(0));
        Click(Find<QPushButton>(page, "downButton"));
        ASSERT_TRUE(Sheet().SetActivePage(Page()));
    }

    /// In the next name dialog, enters the name in place of the one that is `preset`.
    void EnterName(const QString& preset, const QString& name) {
        OnDialog([preset, name](ui::DialogBase& dialog) {
            auto& edit = Find<QLineEdit>(dialog, "nameEdit");
            EXPECT_EQ(edit.text(), preset);
            Press(dialog, Qt::Key_A, Qt::ControlModifier);
            TypeText(edit, name);
            Press(dialog, Qt::Key_Return);
        });
    }
    void CancelName(const QString& preset) {
        OnDialog([preset](ui::DialogBase& dialog) {
            EXPECT_EQ(Find<QLineEdit>(dialog, "nameEdit").text(), preset);
            Press(dialog, Qt::Key_Escape);
        });
    }
    void Add(const QString& name) {
        EnterName("", name);
        ClickButton("addButton");
    }
    /// Another terminal has stored these groups.
    void ChangeElsewhere(const Names& names) {
        memory.names = names;
        memory.reloadFlag = true;
    }
    /// A group file with one group of the study 23.
    QString GroupFile(const CString& name) {
        Write(Path("in.TASG"), "[Common]\r\nFileVersion=TAS Ver3.0\r\nGroupList=" + name + "\r\n[" +
                                   name + "]\r\nStudyType01=23\r\nStudyShowCount=1\r\n");
        return Path("in.TASG");
    }

private:
    std::unique_ptr<CTASetGroup> m_alone;
    std::unique_ptr<CTaSettingSheet> m_sheet;
};

// ---- What is shown ----

TEST_F(GroupPageTest, ShowsTheGroupsAndTheStudiesOfTheActiveOne) {
    OpenInSheet("Volume");
    EXPECT_EQ(Texts(Groups()), (QStringList{"Trend", QString("許功蓋"), "Volume"}));
    EXPECT_EQ(Selected(), "Volume");
    EXPECT_EQ(Panes(), QStringList{"pane 1: KD, MACD"});
    EXPECT_EQ(Hint(), "");
    EXPECT_EQ(Page().windowTitle(), "IDS_TECHVIEW-STRING_GROUPSETTING_TITLE");
    EXPECT_EQ(Groups().accessibleName(), "IDS_TECHVIEW-STRING_GROUPSETTING_GROUPLIST");

    ClickRow(Groups(), 0);
    EXPECT_EQ(Sheet().GetActiveGroup(), "Trend");
    EXPECT_EQ(Panes(), (QStringList{"pane 1: K線圖, 移動平均線", "pane 2: 成交量",
                                    "hidden 3: study 999, KD"}));
    PressKey(Qt::Key_Down);
    EXPECT_EQ(Sheet().GetActiveGroup(), kName);
    EXPECT_EQ(Panes(), QStringList{"pane 1: MACD"});
    EXPECT_EQ(TakeWrites(), Lines{}) << "looking changes nothing";
}

TEST_F(GroupPageTest, AnUnknownActiveGroupGivesWayToTheFirstOne) {
    OpenInSheet("gone");
    EXPECT_EQ(Selected(), "Trend");
    EXPECT_EQ(Sheet().GetActiveGroup(), "Trend");
}

TEST_F(GroupPageTest, ScreensAreListedOnceWithTheirNumberOfViews) {
    memory.viewGroups[5] = {{"Wide###1", 1}, {"Main", 2}, {"Wide###2", 3}, {"Wide", 4}};
    memory.viewGroups[8] = {{kName, 1}};
    Open();
    EXPECT_EQ(Screens(), (QStringList{"Main", "Wide [3]"}));
    ClickRow(Groups(), 1);
    EXPECT_EQ(Screens(), QStringList{});
    ClickRow(Groups(), 2);
    EXPECT_EQ(Screens(), QStringList{QString("許功蓋")});
    // They stay with their group whatever its place and name, and asking for them, which commits
    // what is pending, is not done in the middle of edits.
    const int commits = memory.packCount;
    DragRow(Groups(), 2, 0);
    EXPECT_EQ(Screens(), QStringList{QString("許功蓋")});
    ClickRow(Groups(), 1);
    EXPECT_EQ(Screens(), (QStringList{"Main", "Wide [3]"}));
    EXPECT_EQ(memory.packCount, commits);
    EXPECT_EQ(sheet::ScreenLines({{"b", 1}, {"B", 2}, {"b", 3}, {"a", 4}}),
              (Names{"B", "a", "b [2]"}));
}

// ---- Add ----

TEST_F(GroupPageTest, AddingAGroup) {
    OpenInSheet();
    Add(QString("功\\[新"));
    const CString name = text::FromUtf8("功\\[新");
    EXPECT_EQ(GroupNames(), (Names{"Trend", kName, "Volume", name}));
    EXPECT_EQ(Studies(name), (StudyLists{{0, 4}, {16}, {23}, {22}}));
    EXPECT_EQ(Selected(), QString("功\\[新"));
    EXPECT_EQ(Sheet().GetActiveGroup(), name);
    EXPECT_EQ(Panes().size(), 4);
    EXPECT_EQ(Changed(), Changes{0}) << "the smallest free number";
    EXPECT_EQ(Sheet().IsEditGroup(), 1);
    EXPECT_EQ(Sheet().IsDragList(), 0);
    // The order cannot be changed any more, but groups can still be edited.
    EXPECT_EQ(Hint(), kDraggingOff);
    DragRow(Groups(), 0, 2);
    PressKey(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(Texts(Groups()).front(), "Trend");
    EXPECT_EQ(Sheet().IsDragList(), 0);
    EXPECT_EQ(Enabled().substr(0, 5), "xxxxx");
}

TEST_F(GroupPageTest, AddingANameThatIsTakenAsksAgain) {
    OpenInSheet();
    EnterName("", QString("許功蓋"));
    prompts.ExpectMessage();
    EnterName(QString("許功蓋"), "Other");
    ClickButton("addButton");
    EXPECT_EQ(prompts.Last().text, "IDS_TECHVIEW-STRING_GROUPIMPORT_EXIST_ALREADY");
    EXPECT_EQ(prompts.Last().icon, PromptIcon::Warning);
    EXPECT_EQ(GroupNames().back(), "Other");
}

TEST_F(GroupPageTest, AddingIsGivenUp) {
    OpenInSheet();
    EnterName("", "Trend");
    prompts.ExpectMessage();
    CancelName("Trend");
    ClickButton("addButton");
    EXPECT_EQ(GroupNames().size(), 3U);
    EXPECT_EQ(Changed(), Changes{});
    EXPECT_EQ(Sheet().IsEditGroup(), 0);
    EXPECT_EQ(Hint(), "");
    EXPECT_EQ(TakeWrites(), Lines{});
}

TEST_F(GroupPageTest, TheMaximumIsSaidBeforeANameIsAsked) {
    Names names;
    for (char name = 'a'; name < 'l'; ++name) {
        names.push_back(CString(1, name));
    }
    memory.names = names;
    memory.maxCount = 12;
    Load();
    Open();
    Add("last");
    EXPECT_EQ(GroupNames().size(), 12U);
    prompts.ExpectMessage();
    ClickButton("addButton");
    EXPECT_EQ(prompts.Last().text, "IDS_TECHVIEW-STRING_GROUPSETTING_MAXCNT");
    EXPECT_EQ(GroupNames().size(), 12U);

    EXPECT_TRUE(sheet::IsFull(12, 12) && sheet::IsFull(13, 12) && sheet::IsFull(0, 0));
    EXPECT_FALSE(sheet::IsFull(11, 12) || sheet::IsFull(1000, -1)) << "a negative one is none";
}

TEST_F(GroupPageTest, AddingStoresTheStudiesOfTheGroupThatWasShown) {
    Open();
    ExchangeFirstStudies();
    Add("New");
    EXPECT_EQ(Studies("Trend"), (StudyLists{{4, 0}, {16}, {999, 23}}));
    EXPECT_EQ(Studies("New"), (StudyLists{{0, 4}, {16}, {23}, {22}}));
}

// ---- Rename ----

TEST_F(GroupPageTest, RenamingKeepsPlaceNumberAndStudies) {
    OpenInSheet(kName);
    EnterName(QString("許功蓋"), "Renamed");
    ClickButton("modifyButton");
    EXPECT_EQ(GroupNames(), (Names{"Trend", "Renamed", "Volume"}));
    EXPECT_EQ(Repository().GetUniNumByGroupName("Renamed"), 3);
    EXPECT_EQ(Studies("Renamed"), StudyLists{{22}});
    EXPECT_EQ(TakeWrites(), Lines{"SaveTAGroupNameList([Trend 許功蓋 Volume])"})
        << "saved before it was renamed";
    EXPECT_EQ(Selected(), "Renamed");
    EXPECT_EQ(Sheet().GetActiveGroup(), "Renamed");
    EXPECT_EQ(Changed(), (Changes{3, 1})) << "the number, and the place with another name";
    EXPECT_EQ(Sheet().IsEditGroup(), 1);
    EXPECT_EQ(Hint(), kDraggingOff);
}

TEST_F(GroupPageTest, RenamingToANameThatIsTakenOrItsOwnAsksAgain) {
    OpenInSheet();
    EnterName("Trend", "Trend");
    prompts.ExpectMessage();
    prompts.Meanwhile([this] { EXPECT_EQ(prompts.Last().text, "<Trend> exists"); });
    EnterName("Trend", QString("許功蓋"));
    prompts.ExpectMessage();
    CancelName(QString("許功蓋"));
    ClickButton("modifyButton");
    EXPECT_EQ(prompts.Last().text, QString("<許功蓋> exists"));
    EXPECT_EQ(GroupNames(), (Names{"Trend", kName, "Volume"}));
    EXPECT_EQ(Sheet().IsEditGroup(), 0);
    EXPECT_EQ(TakeWrites(), Lines{});
}

TEST_F(GroupPageTest, AGroupThatIsGoneIsNotRenamed) {
    OpenInSheet();
    OnDialog([this](ui::DialogBase& dialog) {
        ChangeElsewhere({kName, "Volume"});
        Press(dialog, Qt::Key_A, Qt::ControlModifier);
        TypeText(Find<QLineEdit>(dialog, "nameEdit"), "New");
        Press(dialog, Qt::Key_Return);
    });
    ClickButton("modifyButton");
    EXPECT_EQ(GroupNames(), (Names{kName, "Volume"}));
    EXPECT_EQ(Sheet().IsEditGroup(), 0);
    EXPECT_EQ(Changed(), Changes{});
}

// ---- Delete ----

TEST_F(GroupPageTest, DeletingSelectsTheNextGroup) {
    OpenInSheet(kName);
    prompts.ExpectYesNo(false);
    ClickButton("deleteButton");
    EXPECT_EQ(GroupNames().size(), 3U);
    EXPECT_EQ(Sheet().IsEditGroup(), 0);

    prompts.ExpectYesNo(true);
    ClickButton("deleteButton");
    EXPECT_EQ(prompts.Last().text,
              QString("IDS_TECHVIEW-STRING_GROUPSETTING_CHKDELETE - 「許功蓋」"));
    EXPECT_EQ(prompts.Last().icon, PromptIcon::Question);
    EXPECT_EQ(prompts.Last().title, "");
    EXPECT_EQ(GroupNames(), (Names{"Trend", "Volume"}));
    EXPECT_EQ(TakeWrites(), Lines{"SaveTAGroupNameList([Trend Volume])"});
    EXPECT_EQ(Repository().GetUniNumByGroupName(kName), 3) << "only the name has gone";
    EXPECT_EQ(Selected(), "Volume");
    EXPECT_EQ(Sheet().GetActiveGroup(), "Volume");
    EXPECT_EQ(Changed(), Changes{3});
    EXPECT_EQ(Hint(), kDraggingOff);
}

TEST_F(GroupPageTest, DeletingTheLastRowSelectsTheDefaultGroupAndTheOnlyGroupStays) {
    OpenInSheet("Volume");
    prompts.ExpectYesNo(true);
    ClickButton("deleteButton");
    EXPECT_EQ(Selected(), "Trend");
    prompts.ExpectYesNo(true);
    PressKey(Qt::Key_Delete);
    EXPECT_EQ(GroupNames(), Names{kName});
    EXPECT_EQ(Panes(), QStringList{"pane 1: MACD"});
    EXPECT_FALSE(Button("deleteButton").isEnabled());
    ClickButton("deleteButton");
    PressKey(Qt::Key_Delete);
    EXPECT_EQ(GroupNames(), Names{kName});
    EXPECT_EQ(Changed(), (Changes{8, 5}));
}

TEST_F(GroupPageTest, TheLastGroupStaysWhenTheOthersWentMeanwhile) {
    Open();
    prompts.ExpectYesNo(true);
    prompts.Meanwhile([this] { ChangeElsewhere({"Trend"}); });
    ClickButton("deleteButton");
    EXPECT_EQ(GroupNames(), Names{"Trend"});
}

TEST_F(GroupPageTest, TheKeysOfTheList) {
    Open();
    CancelName("");
    PressKey(Qt::Key_Insert);
    CancelName("Trend");
    PressKey(Qt::Key_F2);
    prompts.ExpectYesNo(false);
    PressKey(Qt::Key_Delete);
    // In the tree, they are none of the list's.
    Tree().setFocus();
    PressKey(Qt::Key_Delete);
    EXPECT_EQ(GroupNames().size(), 3U);
}

// ---- Order ----

TEST_F(GroupPageTest, DraggingSwitchesEditingOffUntilTheEnd) {
    OpenInSheet();
    ClickStudy(0, 1);
    DragRow(Groups(), 0, 2);
    EXPECT_EQ(Texts(Groups()), (QStringList{QString("許功蓋"), "Volume", "Trend"}));
    EXPECT_EQ(Selected(), "Trend");
    EXPECT_EQ(Panes().size(), 3) << "the studies of the group that was dragged";
    EXPECT_EQ(Tree().currentItem()->text(0), QString("移動平均線"));
    EXPECT_EQ(Sheet().GetActiveGroup(), "Trend");
    EXPECT_EQ(Sheet().IsDragList(), 1);
    EXPECT_EQ(Sheet().IsEditGroup(), 0);
    EXPECT_EQ(Hint(), kEditingOff);
    EXPECT_EQ(Enabled().substr(0, 5), "....x");
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
    EXPECT_EQ(Hint(), kEditingOff);
    EXPECT_EQ(Enabled().substr(0, 5), "....x");
    EXPECT_EQ(TakeWrites(), Lines{});
}

TEST_F(GroupPageTest, ADragOverAListThatIsNoLongerTrueCountsAsAnEdit) {
    OpenInSheet();
    Repository().DeleteGroupSetting("Volume");
    DragRow(Groups(), 0, 1);
    EXPECT_EQ(Sheet().IsEditGroup(), 1);
    EXPECT_EQ(Sheet().IsDragList(), 0);
    EXPECT_EQ(Hint(), kDraggingOff);
}

TEST_F(GroupPageTest, SavingStoresTheOrderAndThenTheStudies) {
    Open();
    DragRow(Groups(), 0, 2);
    ExchangeFirstStudies();
    StudyLists atOrder;
    store.RunBefore("SaveTAGroupNameList", 1 + store.Calls("SaveTAGroupNameList"),
                    [&] { atOrder = Studies("Trend"); });
    EXPECT_EQ(Page().SaveChange(), 1);
    EXPECT_EQ(atOrder.front(), (std::vector<StudyType>{0, 4})) << "the order goes first";
    EXPECT_EQ(Studies("Trend").front(), (std::vector<StudyType>{4, 0}));
    EXPECT_EQ(GroupNames(), (Names{kName, "Volume", "Trend"}));
    EXPECT_EQ(TakeWrites(), Lines{"SaveTAGroupNameList([許功蓋 Volume Trend])"});
    EXPECT_EQ(Page().IsDragList(), 1) << "for the creator of the sheet";
}

TEST_F(GroupPageTest, SavingKeepsWhatAnotherTerminalDidToTheList) {
    Open();
    DragRow(Groups(), 0, 2);
    ChangeElsewhere({"Trend", "Volume", "Theirs"});
    Page().SaveChange();
    EXPECT_EQ(GroupNames(), (Names{"Volume", "Trend", "Theirs"}));
}

TEST_F(GroupPageTest, AfterAReloadThePageStartsAgain) {
    OpenInSheet("Volume");
    DragRow(Groups(), 2, 0);
    ClickStudy(0, 0);
    ClickButton("moveDownButton");
    memory.viewGroups[8] = {{"Main", 1}};
    ChangeElsewhere({"Volume", "Theirs"});
    memory.uniNums = {{0, 8}, {1, 1}};
    memory.studyLists[{0, "StudyTypeLogKey01"}] = {16};
    prompts.ExpectChoice(0);
    Load();
    ASSERT_TRUE(QTest::qWaitFor([this] { return prompts.Waiting() == 0; }));
    EXPECT_EQ(Texts(Groups()), (QStringList{"Volume", "Theirs"}));
    EXPECT_EQ(Selected(), "Volume");
    EXPECT_EQ(Panes().front(), QString("pane 1: 成交量"));
    EXPECT_EQ(Screens(), QStringList{"Main"});
    EXPECT_EQ(Page().IsDragList() + Page().IsEditGroup(), 0);
    EXPECT_EQ(Hint(), "");
    EXPECT_EQ(Enabled().substr(0, 5), "xxxxx");
    DragRow(Groups(), 0, 1);
    EXPECT_EQ(Page().IsDragList(), 1);
}

// ---- Studies ----

TEST_F(GroupPageTest, AStudyMovesWithinItsPane) {
    OpenInSheet();
    EXPECT_EQ(Enabled().substr(5), "..") << "nothing is selected";
    ClickStudy(0, 0);
    EXPECT_EQ(Enabled().substr(5), ".x");
    ClickButton("moveDownButton");
    EXPECT_EQ(Panes().front(), QString("pane 1: 移動平均線, K線圖"));
    EXPECT_EQ(Tree().currentItem()->text(0), QString("K線圖"));
    EXPECT_EQ(Enabled().substr(5), "x.") << "not into the next pane";
    EXPECT_EQ(Studies("Trend"), (StudyLists{{4, 0}, {16}, {999, 23}})) << "stored at once";
    EXPECT_EQ(Changed(), Changes{5});
    EXPECT_EQ(Sheet().IsEditGroup(), 0);
    EXPECT_EQ(Hint(), "");
    PressKey(Qt::Key_Up, Qt::ControlModifier);
    PressKey(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(Studies("Trend").front(), (std::vector<StudyType>{0, 4}));
}

TEST_F(GroupPageTest, AStudyThatNobodyKnowsMovesAndStays) {
    Open();
    ClickStudy(2, 0);
    ClickButton("moveDownButton");
    EXPECT_EQ(Studies("Trend"), (StudyLists{{0, 4}, {16}, {23, 999}}));
    Page().SaveChange();
    EXPECT_EQ(Studies("Trend"), (StudyLists{{0, 4}, {16}, {23, 999}}));
}

TEST_F(GroupPageTest, APaneMovesWithItsStudies) {
    OpenInSheet();
    ClickStudy(1, -1);
    EXPECT_EQ(Enabled().substr(5), "xx");
    PressKey(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(Panes(), (QStringList{"pane 1: 成交量", "pane 2: K線圖, 移動平均線",
                                    "hidden 3: study 999, KD"}));
    EXPECT_EQ(Studies("Trend"), (StudyLists{{16}, {0, 4}, {999, 23}}));
    EXPECT_EQ(Enabled().substr(5), ".x");
}

TEST_F(GroupPageTest, AMoveStandsOnWhatTheRepositoryHoldsNow) {
    Open();
    ClickStudy(0, 0);
    Repository().SetStudyListByGroupName("Trend", {{0, 22}, {23}});  // another page has saved
    ClickButton("moveDownButton");
    EXPECT_EQ(Studies("Trend"), (StudyLists{{22, 0}, {23}}));
    Repository().SetStudyListByGroupName("Trend", {{16}});
    Page().SaveChange();
    EXPECT_EQ(Studies("Trend"), StudyLists{{16}}) << "an old tree does not come back";
}

TEST_F(GroupPageTest, EditsOfTheStudyPageAreShownAndMovedOn) {
    OpenInSheet();
    ExchangeOnStudyPage();
    EXPECT_EQ(Panes().front(), QString("pane 1: 移動平均線, K線圖"));
    EXPECT_EQ(Studies("Trend").front(), (std::vector<StudyType>{0, 4})) << "not saved yet";
    ClickStudy(2, 0);
    ClickButton("moveDownButton");
    EXPECT_EQ(Studies("Trend"), (StudyLists{{4, 0}, {16}, {23, 999}}));
    StudyLists stored;
    Repository().GetStudyListByGroupName("Trend", stored);
    EXPECT_EQ(Sheet().GetShownStudies("Trend"), stored) << "the study page has no older ones";
}

// ---- Group files ----

TEST_F(GroupPageTest, ImportWithoutAFile) {
    OpenInSheet();
    prompts.ExpectCancel(Kind::OpenFile);
    ClickButton("importButton");
    EXPECT_EQ(prompts.Last().text, "*.TASG");
    EXPECT_EQ(prompts.Last().preset, "*.TASG");

    prompts.ExpectFile(Path("missing.TASG"));
    prompts.ExpectMessage();
    ClickButton("importButton");
    EXPECT_EQ(prompts.Last().text, "IDS_TECHVIEW-STRING_GROUPIMPORT_NOSELECT_FILE");
    EXPECT_EQ(prompts.Last().icon, PromptIcon::Warning);
    EXPECT_EQ(TakeWrites(), Lines{});

    prompts.ExpectFile(GroupFile("New"));
    OnDialog([](ui::DialogBase& dialog) { Press(dialog, Qt::Key_Escape); });
    ClickButton("importButton");
    EXPECT_EQ(TakeWrites(), Lines{"SaveTAGroupNameList([Trend 許功蓋 Volume])"});
    EXPECT_EQ(Sheet().IsEditGroup(), 0);
    EXPECT_EQ(Changed(), Changes{});
}

TEST_F(GroupPageTest, ImportReportsEveryGroup) {
    OpenInSheet(kName);
    prompts.ExpectFile(GroupFile("Trend"));
    OnDialog([this](ui::DialogBase& dialog) {
        memory.viewGroups[3] = {{"Later", 1}};
        // The file's group to the second place.
        Press(dialog, Qt::Key_Down, Qt::ControlModifier);
        Press(dialog, Qt::Key_Return);
    });
    prompts.ExpectMessage();
    ClickButton("importButton");
    EXPECT_EQ(prompts.Last().text, "IDS_TECHVIEW-STRING_GROUPIMPORT_IMPORT_OK");
    EXPECT_EQ(prompts.Last().icon, PromptIcon::None);
    EXPECT_EQ(GroupNames(), (Names{kName, "Trend", "Volume"}));
    EXPECT_EQ(Selected(), "Trend") << "the group that now has the place";
    EXPECT_EQ(Sheet().GetActiveGroup(), "Trend");
    EXPECT_EQ(Panes(), QStringList{"pane 1: KD"});
    EXPECT_EQ(Changed(), (Changes{3, 5, 8, 0, 1}));
    EXPECT_EQ(Sheet().IsEditGroup(), 1);
    EXPECT_EQ(Hint(), kDraggingOff);
    ClickRow(Groups(), 0);
    EXPECT_EQ(Screens(), QStringList{"Later"});
}

TEST_F(GroupPageTest, ImportedStudiesTakeThePlaceOfEditedOnes) {
    OpenInSheet();
    ExchangeOnStudyPage();
    prompts.ExpectFile(GroupFile("Trend"));
    OnDialog([](ui::DialogBase& dialog) { Press(dialog, Qt::Key_Return); });
    prompts.ExpectMessage();
    ClickButton("importButton");
    EXPECT_EQ(Panes(), QStringList{"pane 1: KD"});
    Page().SaveChange();
    EXPECT_EQ(Studies("Trend"), StudyLists{{23}});
}

TEST_F(GroupPageTest, ExportWritesTheGroupsInTheirNewOrder) {
    OpenInSheet();
    DragRow(Groups(), 0, 2);
    OnDialog([](ui::DialogBase& dialog) {
        Click(Find<QPushButton>(dialog, "selectButton"));
        Press(dialog, Qt::Key_Return);
    });
    prompts.ExpectSaveFile(Path("out.TASG"));
    prompts.ExpectYesNo(true);  // whether to make a new file
    prompts.ExpectMessage();
    ClickButton("exportButton");
    EXPECT_NE(Read(Path("out.TASG")).find("GroupList=" + kName + ",Volume,Trend"),
              std::string::npos);
    EXPECT_EQ(Sheet().IsEditGroup(), 0);
    OnDialog([](ui::DialogBase& dialog) { Press(dialog, Qt::Key_Escape); });
    ClickButton("exportButton");
}

// ---- Closing ----

TEST_F(GroupPageTest, AloneItAsksWheneverThereIsSomethingToSave) {
    Open();
    Page().reject();  // nothing to ask
    DragRow(Groups(), 0, 1);
    prompts.ExpectYesNo(false);
    Page().reject();
    EXPECT_EQ(prompts.Last().text, "IDS_TECHVIEW-STRING_GROUPSETTING_SAVE_CHECK");
    EXPECT_EQ(prompts.Last().icon, PromptIcon::Question);
    EXPECT_EQ(prompts.Last().title, "");
    EXPECT_EQ(TakeWrites(), Lines{});
    prompts.ExpectYesNo(true);
    Page().reject();
    EXPECT_EQ(TakeWrites(), Lines{"SaveTAGroupNameList([許功蓋 Trend Volume])"});
}

TEST_F(GroupPageTest, AMoveOfAStudyIsAskedForUntilItIsSaved) {
    Open();
    ClickStudy(0, 0);
    ClickButton("moveDownButton");
    prompts.ExpectYesNo(true);
    Page().reject();
    Page().reject();  // saved, and nothing to ask
}

TEST_F(GroupPageTest, CancelInTheSheetWithoutChanges) {
    OpenInSheet();
    PressKey(Qt::Key_Escape);
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(Sheet().IsAskBeforeClose(), 0);
    EXPECT_EQ(TakeWrites(), Lines{});
}

TEST_F(GroupPageTest, CancelInTheSheetAndYesSaves) {
    OpenInSheet();
    DragRow(Groups(), 0, 2);
    prompts.ExpectYesNo(true);
    PressKey(Qt::Key_Escape);
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(Sheet().IsAskBeforeClose(), 1);
    EXPECT_EQ(Sheet().IsAlwaysSave(), 1);
    EXPECT_EQ(*memory.names, (Names{kName, "Volume", "Trend"}));
    EXPECT_EQ(memory.uniNums[2], 5);
    EXPECT_EQ(LastWrite(), "PackFile()");
}

TEST_F(GroupPageTest, CancelInTheSheetAndNoLeavesEverything) {
    OpenInSheet();
    Add("New");
    ClickRow(Groups(), 0);
    ClickStudy(0, 0);
    ClickButton("moveDownButton");
    const int commits = memory.packCount;
    prompts.ExpectYesNo(false);
    Click(*Sheet().GetDlgItem(ui::kIdCancel));
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(Sheet().IsAlwaysSave(), 0);
    EXPECT_EQ(GroupNames(), (Names{"Trend", kName, "Volume"}));
    EXPECT_EQ(Studies("Trend"), (StudyLists{{0, 4}, {16}, {999, 23}}));
    EXPECT_EQ(memory.packCount, commits);
}

TEST_F(GroupPageTest, NoTakesBackWhatAnImportOrExportHasCommitted) {
    OpenInSheet();
    prompts.ExpectFile(GroupFile("New"));
    OnDialog([](ui::DialogBase& dialog) { Press(dialog, Qt::Key_Return); });
    prompts.ExpectMessage();
    ClickButton("importButton");
    EXPECT_EQ(memory.names->size(), 4U);
    prompts.ExpectYesNo(false);
    PressKey(Qt::Key_Escape);
    EXPECT_EQ(*memory.names, (Names{"Trend", kName, "Volume"}));
    EXPECT_EQ(LastWrite(), "PackFile()");

    OpenInSheet();
    DragRow(Groups(), 0, 2);
    OnDialog([](ui::DialogBase& dialog) {
        Click(Find<QPushButton>(dialog, "selectButton"));
        Press(dialog, Qt::Key_Return);
    });
    prompts.ExpectSaveFile(GroupFile("Old"));
    prompts.ExpectMessage();
    ClickButton("exportButton");
    EXPECT_EQ(memory.uniNums[0], 3);
    prompts.ExpectYesNo(false);
    PressKey(Qt::Key_Escape);
    EXPECT_EQ(*memory.names, (Names{"Trend", kName, "Volume"}));
    EXPECT_EQ(memory.uniNums[0], 5);
    EXPECT_EQ(LastWrite(), "PackFile()");
}

TEST_F(GroupPageTest, AnAnswerThatWasGivenIsNotAskedForAgain) {
    OpenInSheet();
    DragRow(Groups(), 0, 2);
    Sheet().SetAlwaysSaveFlag(0);
    Page().reject();
    EXPECT_EQ(TakeWrites(), Lines{});
}

TEST_F(GroupPageTest, TheSheetsSaveButtonStoresEverything) {
    OpenInSheet();
    ClickStudy(0, 0);
    ClickButton("moveDownButton");
    Add("New");
    PressKey(Qt::Key_Return);
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(*memory.names, (Names{"Trend", kName, "Volume", "New"}));
    EXPECT_EQ((memory.studyLists[{0, "StudyTypeLogKey01"}][0]), 4);
    EXPECT_EQ(memory.uniNums[3], 0);
    EXPECT_EQ(LastWrite(), "PackFile()");
    EXPECT_EQ(Changed(), (Changes{5, 0}));
}

}  // namespace
}  // namespace ta::test
