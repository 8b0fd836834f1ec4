// The sheet itself: its pages and buttons, what it tells of changes, and the room it takes.

#include "tests/sheet/SheetFixture.h"

#include <QCoreApplication>

namespace ta::test {
namespace {

class SheetTest : public SheetFixture {
protected:
    Changes ChangedOver(Changes out) {
        EXPECT_EQ(Sheet().GetChangeGroupList(out), 0);
        return out;
    }
};

TEST_F(SheetTest, HasTheStudyPageAloneWhenHeMayNot) {
    entitlement.denied.insert(Function::TaGroupEditing);
    Open(0);
    EXPECT_EQ(Sheet().GetPageCount(), 1);
    EXPECT_NE(qobject_cast<CTASetParam*>(Sheet().GetActivePage()), nullptr);
    EXPECT_EQ(Sheet().SaveChange(), 0);
    EXPECT_EQ(Sheet().IsEditGroup() + Sheet().IsDragList(), 0);
    Click(*Sheet().GetDlgItem(ui::kIdOk));
    EXPECT_FALSE(Sheet().isVisible());
}

TEST_F(SheetTest, TwoButtonsStandWhereCancelAndApplyWould) {
    Open();
    const auto& save = dynamic_cast<QPushButton&>(*Sheet().GetDlgItem(ui::kIdOk));
    const auto& cancel = dynamic_cast<QPushButton&>(*Sheet().GetDlgItem(ui::kIdCancel));
    EXPECT_EQ(save.text(), "IDS_TECHVIEW-STRING_GROUPSETTING_SAVE");
    EXPECT_EQ(cancel.text(), "IDS_TECHVIEW-STRING_GROUPSETTING_CANCEL");
    EXPECT_FALSE(Sheet().GetDlgItem(ui::kIdApply)->isVisible());
    EXPECT_EQ(save.size(), cancel.size());
    EXPECT_GT(cancel.x(), save.geometry().right());
    EXPECT_LT(cancel.x() - save.geometry().right(), save.width() / 4);
    EXPECT_LT(Sheet().width() - cancel.geometry().right(), save.width() / 4);
    EXPECT_EQ(Sheet().minimumSize(), Sheet().maximumSize()) << "not resizable";
    const QSize size = Sheet().size();
    Turn(kGroups);
    QCoreApplication::processEvents();
    EXPECT_EQ(Sheet().size(), size) << "one size for both pages";
}

TEST_F(SheetTest, EnterPressesTheButtonThatHasTheFocus) {
    Open();
    ClickStudy(0, 0);
    TabTo(Button("downButton"));
    PressKey(Qt::Key_Return);
    EXPECT_EQ(Panes()[0], "pane 1: 移動平均線, K線, study 99");
    EXPECT_TRUE(Sheet().isVisible());
    TabTo(*Sheet().GetDlgItem(ui::kIdCancel));
    prompts.ExpectYesNo(false);
    PressKey(Qt::Key_Return);
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(Sheet().result(), QDialog::Rejected);
}

TEST_F(SheetTest, TheChangeListMixesNumbersAndPositions) {
    Open();
    EXPECT_EQ(ChangedOver({8, 9}), (Changes{8, 9})) << "Nothing changed: left as it was.";
    Sheet().AddToChangeGroupList(5);
    Sheet().AddToChangeGroupList(5);
    ASSERT_EQ(Repository().ModifyGroupName("Swing", "swing"), 1);
    EXPECT_EQ(ChangedOver({8, 9}), (Changes{5, 1}));
    EXPECT_EQ(Changed(), (Changes{5, 1})) << "A second call gives the same.";
    // With another number of groups, renames are not looked for.
    Open();
    Sheet().AddToChangeGroupList(7);
    Repository().AddGroupSetting("D");
    Repository().ModifyGroupName("Trend", "a");
    EXPECT_EQ(Changed(), Changes{7});
}

TEST_F(SheetTest, OpeningCommitsWhatIsPendingAndSavingSkipsPagesThatWereNeverShown) {
    const int commits = memory.packCount;
    CTaSettingSheet sheet("IDS_sheet", nullptr, 0, "Trend", 0, 0, 0);
    EXPECT_EQ(memory.packCount, commits + 1);
    Names order{"Swing", "Trend"};
    Repository().SetGroupNameList(order);
    TakeWrites();
    EXPECT_EQ(sheet.SaveChange(), 0);
    EXPECT_EQ(TakeWrites(), Lines());
    EXPECT_EQ(GroupNames(), order);
}

}  // namespace
}  // namespace ta::test
