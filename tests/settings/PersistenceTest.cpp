// What goes to the store and comes back, and in which order.

#include "tests/support/TestAccess.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace ta::test {
namespace {

class PersistenceTest : public SettingsFixture {
protected:
    MemoryDrawInfo& DrawInfo(const CString& name) {
        auto* drawInfo = dynamic_cast<MemoryDrawInfo*>(Repository().GetDrawInfo(name));
        EXPECT_NE(drawInfo, nullptr);
        return *drawInfo;
    }
    static CString PaneKey(int pane) { return fmt::format("StudyTypeLogKey{:02}", pane); }
    /// Everything of group 0 set to something that is no default.
    void StoreUncommonGroup() {
        memory.names = {{"A"}};
        for (int pane = 1; pane <= 10; ++pane) {
            memory.studyLists[{0, PaneKey(pane)}] = {pane, pane + 100, -1, -1, -1, -1, -1, -1};
        }
        memory.params[0] = {"p1", "", "p3"};
        memory.shapes[0] = {"s1"};
        memory.uniNums[0] = 42;
        memory.showCounts[0] = 9;
        memory.wndShowKeys[0] = 13;
        memory.scalePos[0] = 4'000'000'000;
        memory.cursorLineLockMode[0] = 5;
        memory.cursorMoveStyle[0] = 1;
        for (auto* off : {&memory.chartGrid, &memory.cursor, &memory.showTAInfo, &memory.crossLine,
                          &memory.highLow}) {
            (*off)[0] = false;
        }
        for (auto* on : {&memory.cursorOld, &memory.lowIdx, &memory.cdp}) {
            (*on)[0] = true;
        }
    }
    /// Lines that differ in the group's number.
    static void Append(Lines& lines, int group, std::initializer_list<const char*> formats) {
        for (const char* format : formats) {
            lines.push_back(fmt::format(fmt::runtime(format), group));
        }
    }
    /// The lines that saving one group gives.
    static void AppendSaves(Lines& lines, int group, int uniNum) {
        const char* const firsts[] = {"0 4", "16 -1", "23 -1", "22 -1"};
        for (int pane = 1; pane <= 10; ++pane) {
            lines.push_back(fmt::format("SaveTAGroupStudyList({}, {}, [{} -1 -1 -1 -1 -1 -1])",
                                        group, PaneKey(pane),
                                        pane <= 4 ? firsts[pane - 1] : "-1 -1"));
        }
        Append(lines, group,
               {"SaveTAStudyParamSetting({}, [p])", "SaveTAStudyShapeSetting({}, [s])",
                "SaveTAStudyShowCount({}, 4)", "SaveTATechWndShowKey({}, 4)",
                "SaveTASettingScalePos({}, 0)", "SaveTASettingChartGrid({}, true)",
                "SaveTASettingCursor({}, true)", "SaveTASettingCursorOld({}, false)",
                "SaveTASettingShowTAInfo({}, true)", "SaveTASettingCrossLine({}, true)",
                "SaveTASettingLowIdx({}, false)", "SaveTASettingHighLow({}, true)",
                "SaveTASettingCDP({}, false)", "SaveTASettingCursorLineLockMode({}, 0)",
                "SaveTASettingCursorMoveStyle({}, 0)"});
        lines.push_back(fmt::format("SaveTAGroupUniNum({}, {})", group, uniNum));
    }
};

TEST_F(PersistenceTest, SavingEverythingIsOneFixedSequence) {
    memory.names = {{"A", "B", "C"}};
    memory.uniNums = {{0, 7}, {1, 3}, {2, 5}};
    memory.paramDefaults = {{"p"}};
    memory.shapeDefaults = {{"s"}};
    memory.trendLines["MXTechView"]["0a/2330"] = {{"0a/2330/0000/0/x", {"2002/a/b/c/1/"}}};
    CTaSettingHandle& repository = Repository();
    store.TakeLines();
    repository.SaveAllGroupSetting();
    Lines expected{"GetTASettingReloadType()",
                   "SaveTATrendLine(MXTechView, 0a/2330, [0a/2330/0000/0/x=[2002/a/b/c/1/]])",
                   "SaveTAGroupNameList([A B C])"};
    for (const auto& [group, uniNum] : std::map<int, int>{{0, 7}, {1, 3}, {2, 5}}) {
        AppendSaves(expected, group, uniNum);
    }
    expected.push_back("PackFile()");
    EXPECT_EQ(store.TakeLines(), expected);
    EXPECT_EQ(memory.studyLists.size(), 30u);
    EXPECT_EQ(memory.packCount, 1);
}

TEST_F(PersistenceTest, LoadingIsOneFixedSequence) {
    memory.names = {{"A", "B"}};
    memory.trendLines["MXTechView"]["0a/2330"] = {{"0a/2330/0000/0/x", {"l"}}};
    Repository();
    Lines expected{"GetTAGroupMaxCount()", "LoadTAGroupNameList()"};
    const auto forBoth = [&](std::initializer_list<const char*> formats) {
        for (const int group : {0, 1}) {
            Append(expected, group, formats);
        }
    };
    for (const int group : {0, 1}) {
        for (int pane = 1; pane <= 10; ++pane) {
            expected.push_back(fmt::format("LoadTAGroupStudyList({}, {})", group, PaneKey(pane)));
        }
        Append(expected, group, {"LoadTAGroupUniNum({})"});
    }
    expected.emplace_back("LoadTAStudyParamDefaultSetting()");
    forBoth({"LoadTAStudyParamSetting({})"});
    expected.emplace_back("LoadTAStudyShapeDefaultSetting()");
    forBoth({"LoadTAStudyShapeSetting({})"});
    forBoth({"LoadTAStudyShowCount({})"});
    forBoth({"LoadTATechWndShowKey({})"});
    forBoth({"LoadTASettingScalePos({})", "LoadTASettingChartGrid({})", "LoadTASettingCursor({})",
             "LoadTASettingCursorOld({})", "LoadTASettingShowTAInfo({})",
             "LoadTASettingCrossLine({})", "LoadTASettingLowIdx({})", "LoadTASettingHighLow({})",
             "LoadTASettingCDP({})", "LoadTASettingCursorLineLockMode({})",
             "LoadTASettingCursorMoveStyle({})"});
    Append(expected, 0,
           {"LoadTATrendLineSettingClass()", "LoadTATrendLineSettingSymbols(MXTechView)",
            "LoadTATrendLineSymbolUpdTime(MXTechView, 10, 2330)",
            "LoadTATrendLine(MXTechView, 0a/2330)"});
    EXPECT_EQ(store.TakeLines(), expected);
}

TEST_F(PersistenceTest, WhatIsStoredComesBackTheSame) {
    StoreUncommonGroup();
    Repository();
    memory = MemoryConfigStore();
    Repository().SaveAllGroupSetting();
    MemoryConfigStore saved = memory;
    StoreUncommonGroup();
    EXPECT_EQ(saved.names, memory.names);
    EXPECT_EQ(saved.studyLists, memory.studyLists);
    EXPECT_EQ(saved.params, memory.params);
    EXPECT_EQ(saved.shapes, memory.shapes);
#define TA_TEST_SAME(Operation, Type, field) EXPECT_EQ(saved.field, memory.field);
    TA_TEST_GROUP_VALUES(TA_TEST_SAME)
#undef TA_TEST_SAME
}

TEST_F(PersistenceTest, ParametersAndShapesAreKeptAlike) {
    using Handle = CTaSettingHandle;
    struct Kind {
        std::optional<Names> MemoryConfigStore::*defaults;
        std::map<unsigned, Names> MemoryConfigStore::*stored;
        int (Handle::*getAll)(SettingsByGroup&);
        void (Handle::*setAll)(const SettingsByGroup&);
        int (Handle::*getOne)(const CString&, Names&);
        std::vector<int> MemoryDrawInfo::*modes;
    };
    const Kind kinds[]{{&MemoryConfigStore::paramDefaults, &MemoryConfigStore::params,
                        &Handle::GetAllStudyParamSetting, &Handle::SetAllStudyParamSetting,
                        &Handle::GetStudyParamSettingByGroupName, &MemoryDrawInfo::paramModes},
                       {&MemoryConfigStore::shapeDefaults, &MemoryConfigStore::shapes,
                        &Handle::GetAllStudyShapeSetting, &Handle::SetAllStudyShapeSetting,
                        &Handle::GetStudyShapeSettingByGroupName, &MemoryDrawInfo::shapeModes}};
    for (const Kind& kind : kinds) {
        memory = MemoryConfigStore();
        memory.names = {{"A", "B", "C"}};
        memory.*kind.defaults = {{"default"}};
        memory.*kind.stored = {{1, {}}, {2, {"c"}}};
        EndRepository();
        const auto all = [&] {
            SettingsByGroup strings{{"left over", {}}};
            EXPECT_EQ((Repository().*kind.getAll)(strings), 1);
            return strings;
        };
        EXPECT_EQ(all(), (SettingsByGroup{{"A", {"default"}}, {"B", {}}, {"C", {"c"}}}))
            << "a stored empty list is no default";
        EXPECT_EQ(DrawInfo("A").*kind.modes, std::vector{int{kDrawInfoLoad}});
        (Repository().*kind.setAll)({{"C", {"x", "y"}}, {"?", {"z"}}, {"B", {"b"}}});
        EXPECT_EQ(all(), (SettingsByGroup{{"A", {"default"}}, {"B", {"b"}}, {"C", {"x", "y"}}}));
        EXPECT_EQ(DrawInfo("C").*kind.modes, std::vector<int>(2, kDrawInfoLoad));
        Names one;
        EXPECT_EQ((Repository().*kind.getOne)("C", one), 1);
        EXPECT_EQ(one, (Names{"x", "y"}));
        Repository().DeleteAllParam("C");
        EXPECT_EQ(all(), (SettingsByGroup{{"A", {"default"}}, {"B", {"b"}}, {"C", {}}}));
        EXPECT_EQ((memory.*kind.stored)[2], Names{"c"}) << "memory only";
    }
}

TEST_F(PersistenceTest, SettersThatWriteAtOnce) {
    memory.names = {{"A", "B"}};
    CTaSettingHandle& repository = Repository();
    store.TakeLines();
    Names names{"B", "A"};
    repository.SetGroupNameList(names);
    repository.SetStudyCountByGroupName("A", 6);
    repository.SetTechWndKeyByGroupName("A", -2);
    repository.SetStudyListByGroupName("A", {{3}});
    repository.SetStudyParamSettingByGroupName("A", {"x"}, kDrawInfoReplace);
    repository.SetStudyShapeSettingByGroupName("A", {"y"});
    Lines lines = store.TakeLines();
    std::erase(lines, "GetTASettingReloadType()");
    EXPECT_EQ(lines, (Lines{"SaveTAGroupNameList([B A])", "SaveTAStudyShowCount(1, 6)",
                            "SaveTATechWndShowKey(1, -2)"}));
    EXPECT_EQ(DrawInfo("A").paramModes, (std::vector{int{kDrawInfoLoad}, int{kDrawInfoReplace}}));
    EXPECT_EQ(DrawInfo("A").shapeModes, (std::vector{int{kDrawInfoLoad}, int{kDrawInfoLoad}}));
    EXPECT_EQ(memory.packCount, 0);
}

TEST_F(PersistenceTest, FailedSavesAreNotRetriedAndLeaveMemoryAsItIs) {
    memory.names = {{"A"}};
    CTaSettingHandle& repository = Repository();
    repository.AddGroupSetting("B");
    store.FailOnCall(CallPlan::kEveryCall);
    repository.SetStudyCountByGroupName("B", 8);
    repository.SaveAllGroupSetting();
    EXPECT_EQ(store.Calls("SaveTAStudyShowCount"), 3);
    EXPECT_EQ(repository.GetStudyCountByGroupName("B"), 8);
    EXPECT_EQ(memory.names, Names{"A"});
}

TEST_F(PersistenceTest, EverySingleFailingLoadLeavesADefault) {
    StoreUncommonGroup();
    Repository();
    const int loads = store.Calls();
    for (int n = 1; n <= loads; ++n) {
        EndRepository();
        store.Reset();
        store.FailOnCall(n);
        StudyLists lists;
        Repository().GetStudyListByGroupName(Repository().GetSystemDefaultGroup(), lists);
        EXPECT_EQ(lists.size(), 10u) << n;
        EXPECT_GE(lists[0][0], 0) << n;
        EXPECT_GE(Repository().GetUniNumByGroupIndex(0), 0) << n;
    }
}

}  // namespace
}  // namespace ta::test
