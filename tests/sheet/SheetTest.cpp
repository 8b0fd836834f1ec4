// The sheet itself: its pages, and what it tells of changes.

#include "platform/SyncInfo.h"
#include "sheet/TASetParam.h"
#include "sheet/TaSettingSheet.h"
#include "tests/sheet/SheetFixture.h"
#include "tests/support/MemoryServices.h"

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

    std::unique_ptr<CTaSettingSheet> Make() {
        return std::make_unique<CTaSettingSheet>("IDS_sheet", nullptr, 0, "A", 0, 0, 0);
    }
    static Changes Changed(CTaSettingSheet& sheet, Changes out = {}) {
        EXPECT_EQ(sheet.GetChangeGroupList(out), 0);
        return out;
    }
};

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
        EXPECT_EQ(sheet->SaveChange(), 0);
        Click(*sheet->GetDlgItem(ui::kIdOk));
        EXPECT_FALSE(sheet->isVisible());
    }
    services.entitlement = nullptr;
    CSyncInfo::GetSettingCFG().SetServices(services);
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

TEST_F(SettingSheetTest, SavingSkipsPagesThatWereNeverShown) {
    const auto sheet = Make();
    Names order{"C", "A", "B"};
    Repository().SetGroupNameList(order);
    TakeWrites();
    EXPECT_EQ(sheet->SaveChange(), 0);
    EXPECT_EQ(TakeWrites(), std::vector<std::string>());
    EXPECT_EQ(GroupNames(), order);
}

}  // namespace
}  // namespace ta::test
