// The group page: what it shows, and what the repository, the store and the sheet hold after the
// user's actions; alone and in a settings sheet.

#include "platform/Text.h"
#include "platform/ui/DragListBox.h"
#include "sheet/GroupRows.h"
#include "sheet/ScreenLines.h"
#include "sheet/TASetGroup.h"
#include "sheet/TASetParam.h"
#include "sheet/TaSettingSheet.h"
#include "tests/sheet/SheetFixture.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <memory>

namespace ta::test {
namespace {

using Lines = std::vector<std::string>;
using Changes = std::vector<unsigned>;

const CString kName = text::FromUtf8("許功蓋");

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
    void Open() {
        m_alone = std::make_unique<CTASetGroup>();
        Show(*m_alone);
        TakeWrites();
    }
    /// The page in a sheet, in front.
    void OpenInSheet(const CString& group = "Trend") {
        m_sheet = std::make_unique<CTaSettingSheet>("caption", nullptr, 0, group, 0, 0, 0);
        Show(*m_sheet);
        TakeWrites();
    }
    CTaSettingSheet& Sheet() { return *m_sheet; }
    CTASetGroup& Page() {
        return m_alone != nullptr ? *m_alone : *m_sheet->findChild<CTASetGroup*>();
    }
    /// To the sheet, which gets active again when it has closed a dialog.
    void PressKey(int key, Qt::KeyboardModifiers modifiers = {}) {
        Sheet().activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &Sheet(); }));
        Press(Sheet(), key, modifiers);
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
    QString Selected() { return Groups().currentItem()->text(); }
    QStringList Screens() { return Texts(Find<QListWidget>(Page(), "screenList")); }
    QStringList Panes() { return SheetFixture::Panes(Tree()); }
    void ClickStudy(int pane, int study) { SheetFixture::ClickStudy(Tree(), pane, study); }
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

    ClickRow(Groups(), 0);
    EXPECT_EQ(Panes(), (QStringList{"pane 1: K線圖, 移動平均線", "pane 2: 成交量",
                                    "hidden 3: study 999, KD"}));
    PressKey(Qt::Key_Down);
    EXPECT_EQ(Sheet().GetActiveGroup(), kName);
    EXPECT_EQ(Panes(), QStringList{"pane 1: MACD"});
    EXPECT_EQ(TakeWrites(), Lines{}) << "looking changes nothing";
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
    EXPECT_EQ(Changed(), Changes{0}) << "the smallest free number";
    EXPECT_EQ(Sheet().IsEditGroup(), 1);
    EXPECT_EQ(Sheet().IsDragList(), 0);
    // The order cannot be changed any more, but groups can still be edited.
    DragRow(Groups(), 0, 2);
    PressKey(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(Texts(Groups()).front(), "Trend");
    EXPECT_EQ(Sheet().IsDragList(), 0);
    EXPECT_TRUE(Button("addButton").isEnabled());
}

TEST(GroupRowsTest, TheMaximum) {
    EXPECT_TRUE(sheet::IsFull(12, 12) && sheet::IsFull(13, 12) && sheet::IsFull(0, 0));
    EXPECT_FALSE(sheet::IsFull(11, 12) || sheet::IsFull(1000, -1)) << "a negative one is none";
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

// ---- Delete ----

TEST_F(GroupPageTest, DeletingSelectsTheNextGroup) {
    OpenInSheet(kName);
    prompts.ExpectYesNo(false);
    ClickButton("deleteButton");
    EXPECT_EQ(GroupNames().size(), 3U);
    EXPECT_EQ(Sheet().IsEditGroup(), 0);

    prompts.ExpectYesNo(true);
    ClickButton("deleteButton");
    EXPECT_EQ(GroupNames(), (Names{"Trend", "Volume"}));
    EXPECT_EQ(TakeWrites(), Lines{"SaveTAGroupNameList([Trend Volume])"});
    EXPECT_EQ(Repository().GetUniNumByGroupName(kName), 3) << "only the name has gone";
    EXPECT_EQ(Selected(), "Volume");
    EXPECT_EQ(Sheet().GetActiveGroup(), "Volume");
    EXPECT_EQ(Changed(), Changes{3});
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

// ---- Order ----

TEST_F(GroupPageTest, DraggingSwitchesEditingOffUntilTheEnd) {
    OpenInSheet();
    DragRow(Groups(), 0, 2);
    EXPECT_EQ(Texts(Groups()), (QStringList{QString("許功蓋"), "Volume", "Trend"}));
    EXPECT_EQ(Selected(), "Trend");
    EXPECT_EQ(Panes().size(), 3) << "the studies of the group that was dragged";
    EXPECT_EQ(Sheet().IsDragList(), 1);
    EXPECT_EQ(Sheet().IsEditGroup(), 0);
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
    EXPECT_FALSE(Button("addButton").isEnabled());
}

TEST_F(GroupPageTest, ADragOverAListThatIsNoLongerTrueCountsAsAnEdit) {
    OpenInSheet();
    Repository().DeleteGroupSetting("Volume");
    DragRow(Groups(), 0, 1);
    EXPECT_EQ(Sheet().IsEditGroup(), 1);
    EXPECT_EQ(Sheet().IsDragList(), 0);
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
    ChangeElsewhere({"Volume", "Theirs"});
    memory.uniNums = {{0, 8}, {1, 1}};
    memory.studyLists[{0, "StudyTypeLogKey01"}] = {16};
    prompts.ExpectChoice(0);
    Load();
    ASSERT_TRUE(QTest::qWaitFor([this] { return prompts.Waiting() == 0; }));
    EXPECT_EQ(Texts(Groups()), (QStringList{"Volume", "Theirs"}));
    EXPECT_EQ(Selected(), "Volume");
    EXPECT_EQ(Panes().front(), QString("pane 1: 成交量"));
    EXPECT_EQ(Page().IsDragList() + Page().IsEditGroup(), 0);
    DragRow(Groups(), 0, 1);
    EXPECT_EQ(Page().IsDragList(), 1);
}

// ---- Studies ----

TEST_F(GroupPageTest, AStudyMovesWithinItsPaneAndAPaneWithItsStudies) {
    OpenInSheet();
    ClickStudy(0, 0);
    ClickButton("moveDownButton");
    EXPECT_EQ(Panes().front(), QString("pane 1: 移動平均線, K線圖"));
    EXPECT_EQ(Tree().currentItem()->text(0), QString("K線圖"));
    EXPECT_EQ(Studies("Trend"), (StudyLists{{4, 0}, {16}, {999, 23}})) << "stored at once";
    EXPECT_EQ(Changed(), Changes{5});
    PressKey(Qt::Key_Up, Qt::ControlModifier);
    PressKey(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(Studies("Trend").front(), (std::vector<StudyType>{0, 4}));
    ClickStudy(1, -1);
    PressKey(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(Studies("Trend"), (StudyLists{{16}, {0, 4}, {999, 23}}));
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
    EXPECT_EQ(GroupNames(), (Names{kName, "Trend", "Volume"}));
    EXPECT_EQ(Selected(), "Trend") << "the group that now has the place";
    EXPECT_EQ(Sheet().GetActiveGroup(), "Trend");
    EXPECT_EQ(Panes(), QStringList{"pane 1: KD"});
    EXPECT_EQ(Changed(), (Changes{3, 5, 8, 0, 1}));
    EXPECT_EQ(Sheet().IsEditGroup(), 1);
    ClickRow(Groups(), 0);
    EXPECT_EQ(Screens(), QStringList{"Later"});
}

}  // namespace
}  // namespace ta::test
