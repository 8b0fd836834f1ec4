#include "settings/SettingsSnapshot.h"
#include "tests/support/TestAccess.h"

namespace ta::test {
namespace {

using settings::SettingsSnapshot;
using Names = std::vector<CString>;

/// All that a user can see of the groups, by name.
struct Seen {
    Names names;
    std::map<CString, std::string> groups;

    bool operator==(const Seen&) const = default;
};

class SnapshotTest : public SettingsFixture {
protected:
    SnapshotTest() {
        Repository();
        for (const char* name : {"A", "B", "C"}) {
            Repository().AddGroupSetting(name);
            Edit(name, name);
        }
        Repository().SaveAllGroupSetting();
    }

    /// Changes everything that a group holds.
    void Edit(const CString& name, const CString& mark) {
        CTaSettingHandle& repository = Repository();
        repository.SetStudyListByGroupName(name, {{0, mark.front()}, {16}});
        repository.SetStudyCountByGroupName(name, mark.front() % 10);
        repository.SetTechWndKeyByGroupName(name, mark.front());
        repository.SetStudyParamSettingByGroupName(name, {"4=" + mark});
        repository.SetStudyShapeSettingByGroupName(name, {"4:" + mark, mark});
        repository.GetDrawInfo(name)->CommonProperty().bChartGrid = mark.front() % 2 == 0;
    }

    Seen Look() {
        Seen seen;
        Repository().GetGroupNameList(seen.names);
        for (const CString& name : seen.names) {
            StudyLists lists;
            Names strings;
            Repository().GetStudyListByGroupName(name, lists);
            std::string all = std::to_string(Repository().GetUniNumByGroupName(name));
            for (const auto& pane : lists) {
                for (const StudyType type : pane) {
                    all += ' ' + std::to_string(type);
                }
            }
            all += '#' + std::to_string(Repository().GetStudyCountByGroupName(name)) + '#' +
                   std::to_string(Repository().GetTechWndKeyByGroupName(name));
            Repository().GetStudyParamSettingByGroupName(name, strings);
            for (const CString& each : strings) {
                all += '|' + each;
            }
            Repository().GetStudyShapeSettingByGroupName(name, strings);
            for (const CString& each : strings) {
                all += '|' + each;
            }
            all += Repository().GetDrawInfo(name)->CommonProperty().bChartGrid ? "+" : "-";
            seen.groups[name] = all;
        }
        return seen;
    }

    /// Runs `edit` between a snapshot and its return; everything must be as it was.
    template <class Action>
    void ExpectUndone(Action edit) {
        const Seen before = Look();
        const int live = MemoryDrawInfo::LiveCount();
        const SettingsSnapshot snapshot = SettingsSnapshot::Take(Repository());
        edit();
        EXPECT_NE(Look(), before) << "The edit changes nothing that can be seen.";
        snapshot.Restore(Repository());
        EXPECT_EQ(Look(), before);
        EXPECT_EQ(MemoryDrawInfo::LiveCount(), live) << "Draw infos were left over or lost.";
        // What is saved then is what was saved before.
        Repository().SaveAllGroupSetting();
        EndRepository();
        EXPECT_EQ(Look(), before);
    }
};

TEST_F(SnapshotTest, UndoesEditsAndOrders) {
    ExpectUndone([this] {
        Edit("B", "x");
        Names names{"C", "B", "A"};
        Repository().SetGroupNameList(names);
    });
}

TEST_F(SnapshotTest, UndoesAddsAndRenamesThatUseEachOthersNames) {
    ExpectUndone([this] {
        Repository().ModifyGroupName("A", "was A");
        Repository().AddGroupSetting("A");
        Edit("A", "x");
        Repository().ModifyGroupName("C", "D");
        Repository().ModifyGroupName("B", "C");
    });
}

TEST_F(SnapshotTest, UndoesTheDeletionOfAGroupThatIsListedNoMore) {
    ExpectUndone([this] {
        Names names;
        Repository().GetGroupNameList(names);
        std::erase(names, "B");
        Repository().SetGroupNameList(names);
    });
}

TEST_F(SnapshotTest, MakesGroupsAgainWhoseObjectsAreGone) {
    ExpectUndone([this] {
        // The record of a deleted group gives way to another one of its name.
        Names names;
        Repository().GetGroupNameList(names);
        std::erase(names, "A");
        std::erase(names, "B");
        Repository().SetGroupNameList(names);
        Repository().AddGroupSetting("A");
        Repository().ModifyGroupName("C", "B");
        Repository().AddGroupSetting("?");
        Repository().DeleteGroupSetting(Repository().GetSystemDefaultGroup());
    });
}

TEST_F(SnapshotTest, KeepsGroupsOfOneNumberApart) {
    GroupRecords records;
    Repository().GetAllDrawInfo(records);
    for (auto& [name, record] : records) {
        record.iUniNum = 7;
    }
    Repository().SetAllDrawInfo(records);
    ExpectUndone([this] {
        Repository().ModifyGroupName("A", "Z");
        Edit("B", "x");
        Repository().DeleteGroupSetting("C");
    });
}

TEST_F(SnapshotTest, KeepsGroupsThatWereListedNoMoreBefore) {
    Names names;
    Repository().GetGroupNameList(names);
    std::erase(names, "B");
    Repository().SetGroupNameList(names);
    const int number = Repository().GetUniNumByGroupName("B");
    const SettingsSnapshot snapshot = SettingsSnapshot::Take(Repository());
    Repository().ClearNoUseGroup();
    ASSERT_EQ(Repository().GetUniNumByGroupName("B"), -1);
    snapshot.Restore(Repository());
    EXPECT_EQ(Repository().GetUniNumByGroupName("B"), number);
    EXPECT_EQ(Repository().FindGroup("B"), 0);
    EXPECT_EQ(snapshot.GroupNames(), names);
}

}  // namespace
}  // namespace ta::test
