// The sheet itself: its pages, buttons, and what it tells of changes.

#include "platform/SyncInfo.h"
#include "sheet/TASetGroup.h"
#include "sheet/TASetParam.h"
#include "sheet/TaSettingSheet.h"
#include "tests/sheet/SheetFixture.h"
#include "tests/support/MemoryServices.h"

#include <QPushButton>
#include <QTabWidget>

namespace ta::test {
namespace {

using Changes = std::vector<unsigned>;

class SettingSheetTest : public SheetFixture {
protected:
    SettingSheetTest() {
        Load();
        for (const char* name : {"A", "B", "C"}) {
            Repository().AddGroupSetting(name);
        }
        Repository().SaveAllGroupSetting();
    }

    std::unique_ptr<CTaSettingSheet> Make(unsigned page = 0) {
        return std::make_unique<CTaSettingSheet>("IDS_sheet", nullptr, page, "A", 0, 0, 0);
    }
    static Changes Changed(CTaSettingSheet& sheet, Changes out = {}) {
        EXPECT_EQ(sheet.GetChangeGroupList(out), 0);
        return out;
    }
    static void Reorder(std::vector<CString> names) { Repository().SetGroupNameList(names); }
};

TEST_F(SettingSheetTest, HasTheGroupPageFirstWhenTheUserMayEditGroups) {
    const auto sheet = Make(1);
    Show(*sheet);
    EXPECT_EQ(sheet->windowTitle(), "IDS_sheet");
    EXPECT_EQ(sheet->GetPageCount(), 2);
    EXPECT_NE(qobject_cast<CTASetParam*>(sheet->GetActivePage()), nullptr);
    sheet->SetActivePage(0);
    EXPECT_NE(qobject_cast<CTASetGroup*>(sheet->GetActivePage()), nullptr);
    EXPECT_EQ(sheet->GetActiveGroup(), "A");
}

TEST_F(SettingSheetTest, HasTheStudyPageAloneWhenHeMayNot) {
    Services services = CSyncInfo::GetSettingCFG().GetServices();
    MemoryEntitlement entitlement;
    entitlement.denied.insert(Function::TaGroupEditing);
    services.entitlement = &entitlement;
    CSyncInfo::GetSettingCFG().SetServices(services);
    {
        const auto sheet = Make();
        Show(*sheet);
        EXPECT_EQ(sheet->GetPageCount(), 1);
        EXPECT_NE(qobject_cast<CTASetParam*>(sheet->GetActivePage()), nullptr);
        EXPECT_EQ(sheet->IsEditGroup(), 0);
        EXPECT_EQ(sheet->IsDragList(), 0);
        EXPECT_EQ(sheet->SaveChange(), 0);
        Click(*sheet->GetDlgItem(ui::kIdOk));
        EXPECT_FALSE(sheet->isVisible());
    }
    services.entitlement = nullptr;
    CSyncInfo::GetSettingCFG().SetServices(services);
}

TEST_F(SettingSheetTest, ShowsSaveAndCancelWhereCancelAndApplyStand) {
    ui::PropertySheet plain("IDS_sheet", nullptr, 0);
    ui::PropertyPage page;
    plain.AddPage(page);
    Show(plain);
    const auto sheet = Make();
    Show(*sheet);
    const auto fromRight = [](const ui::PropertySheet& of, int id) {
        return of.width() - of.GetDlgItem(id)->geometry().right();
    };
    EXPECT_TRUE(sheet->GetDlgItem(ui::kIdApply)->isHidden());
    EXPECT_EQ(fromRight(*sheet, ui::kIdCancel), fromRight(plain, ui::kIdApply));
    EXPECT_LT(sheet->GetDlgItem(ui::kIdOk)->x(), sheet->GetDlgItem(ui::kIdCancel)->x());
    const auto text = [&sheet](int id) {
        return static_cast<QPushButton*>(sheet->GetDlgItem(id))->text();
    };
    EXPECT_EQ(text(ui::kIdOk), "IDS_TECHVIEW-STRING_GROUPSETTING_SAVE");
    EXPECT_EQ(text(ui::kIdCancel), "IDS_TECHVIEW-STRING_GROUPSETTING_CANCEL");
    plain.RemovePage(page);
}

TEST_F(SettingSheetTest, TheChangeListMixesNumbersAndPositions) {
    const auto sheet = Make();
    EXPECT_EQ(Changed(*sheet, {8, 9}), (Changes{8, 9})) << "Nothing changed: left as it was.";
    sheet->AddToChangeGroupList(5);
    sheet->AddToChangeGroupList(5);
    ASSERT_EQ(Repository().ModifyGroupName("B", "b"), 1);
    EXPECT_EQ(Changed(*sheet, {8, 9}), (Changes{5, 2}));
    EXPECT_EQ(Changed(*sheet), (Changes{5, 2})) << "A second call gives the same.";
    // With another number of groups, renames are not looked for.
    const auto other = Make();
    other->AddToChangeGroupList(7);
    Repository().AddGroupSetting("D");
    Repository().ModifyGroupName("A", "a");
    EXPECT_EQ(Changed(*other), Changes{7});
}

TEST_F(SettingSheetTest, AfterADragEveryGroupMayHaveChanged) {
    const auto sheet = Make();
    Show(*sheet);
    auto& list = Find<QListWidget>(*sheet, "groupList");
    DragRow(list, 0, 2);
    EXPECT_EQ(sheet->IsDragList(), 1);
    sheet->AddToChangeGroupList(5);
    EXPECT_EQ(Changed(*sheet, {8, 9}), Changes());
}

TEST_F(SettingSheetTest, ANewSheetStartsAfresh) {
    {
        const auto sheet = Make();
        sheet->AddToChangeGroupList(5);
        sheet->SetAlwaysSaveFlag(0);
        EXPECT_EQ(sheet->IsAskBeforeClose(), 1);
        EXPECT_EQ(sheet->IsAlwaysSave(), 0);
        sheet->SetAlwaysSaveFlag(1);
        EXPECT_EQ(sheet->IsAlwaysSave(), 1);
    }
    const auto sheet = Make();
    EXPECT_EQ(sheet->IsAskBeforeClose(), 0);
    EXPECT_EQ(sheet->IsAlwaysSave(), 0);
    EXPECT_EQ(Changed(*sheet), Changes());
    std::vector<StudyType> types{3};
    std::vector<CString> names{"kept"};
    EXPECT_EQ(sheet->GetChangeStudy(types, names), 0);
    EXPECT_EQ(types, std::vector<StudyType>{3});
    EXPECT_EQ(names, std::vector<CString>{"kept"});
    EXPECT_FALSE(sheet->IsEditStudy());
}

TEST_F(SettingSheetTest, SavingSkipsPagesThatWereNeverShown) {
    const auto sheet = Make();
    Reorder({"C", "A", "B"});
    TakeWrites();
    EXPECT_EQ(sheet->SaveChange(), 0);
    EXPECT_EQ(TakeWrites(), std::vector<std::string>());
    EXPECT_EQ(GroupNames(), (Names{"C", "A", "B"}));
}

}  // namespace
}  // namespace ta::test
