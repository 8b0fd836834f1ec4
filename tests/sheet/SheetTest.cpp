// The sheet itself: its pages and buttons, what it tells of changes, and the room it takes.

#include "tests/sheet/SheetFixture.h"

namespace ta::test {
namespace {

using SheetTest = SheetFixture;

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
    EXPECT_LT(Sheet().width() - cancel.geometry().right(), save.width() / 4);
    EXPECT_EQ(Sheet().minimumSize(), Sheet().maximumSize()) << "not resizable";
    const QSize size = Sheet().size();
    Turn(kGroups);
    EXPECT_EQ(Sheet().size(), size) << "one size for both pages";
}

TEST_F(SheetTest, TheChangeListMixesNumbersAndPositions) {
    Open();
    Changes changes{8, 9};
    Sheet().GetChangeGroupList(changes);
    EXPECT_EQ(changes, (Changes{8, 9})) << "Nothing changed: left as it was.";
    Sheet().AddToChangeGroupList(5);
    Sheet().AddToChangeGroupList(5);
    ASSERT_EQ(Repository().ModifyGroupName("Swing", "swing"), 1);
    for (int call = 0; call < 2; ++call) {
        Sheet().GetChangeGroupList(changes);
        EXPECT_EQ(changes, (Changes{5, 1}));
    }
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
