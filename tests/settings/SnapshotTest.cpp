#include "settings/SettingsSnapshot.h"
#include "tests/support/TestAccess.h"

#include <fmt/format.h>

namespace ta::test {
namespace {

using settings::SettingsSnapshot;

/// All that a user can see of the groups, by name, and under "?" their order.
using Seen = std::map<CString, std::string>;

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
        CTaSettingHandle& repository = Repository();
        Seen seen{{"?", fmt::format("{}", fmt::join(Listed(), ","))}};
        for (const CString& name : Listed()) {
            StudyLists lists;
            Names params;
            Names shapes;
            repository.GetStudyListByGroupName(name, lists);
            repository.GetStudyParamSettingByGroupName(name, params);
            repository.GetStudyShapeSettingByGroupName(name, shapes);
            seen[name] = fmt::format(
                "{} {} {} {} {} {} {} {}", repository.GetUniNumByGroupName(name),
                repository.GetStudyCountByGroupName(name),
                repository.GetTechWndKeyByGroupName(name),
                repository.GetDrawInfo(name)->CommonProperty().bChartGrid, fmt::join(params, "|"),
                fmt::join(shapes, "|"), fmt::join(lists.at(0), ","), fmt::join(lists.at(1), ","));
        }
        return seen;
    }
    Names Listed() {
        Names names;
        Repository().GetGroupNameList(names);
        return names;
    }
    /// Takes names off the list.
    void Unlist(std::initializer_list<const char*> unlisted) {
        Names names = Listed();
        for (const char* name : unlisted) {
            std::erase(names, name);
        }
        Repository().SetGroupNameList(names);
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

TEST_F(SnapshotTest, MakesGroupsAgainWhoseObjectsAreGone) {
    ExpectUndone([this] {
        // The record of a deleted group gives way to another one of its name.
        Unlist({"A", "B"});
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
    Unlist({"B"});
    const int number = Repository().GetUniNumByGroupName("B");
    const SettingsSnapshot snapshot = SettingsSnapshot::Take(Repository());
    Repository().ClearNoUseGroup();
    ASSERT_EQ(Repository().GetUniNumByGroupName("B"), -1);
    snapshot.Restore(Repository());
    EXPECT_EQ(Repository().GetUniNumByGroupName("B"), number);
    EXPECT_EQ(Repository().FindGroup("B"), 0);
    EXPECT_EQ(snapshot.GroupNames(), Listed());
}

}  // namespace
}  // namespace ta::test
