// The group table: loading, numbers, adding, renaming, deleting, and what a reload does.

#include "platform/Text.h"
#include "settings/Messages.h"
#include "tests/support/TestAccess.h"

#include <gtest/gtest.h>

#include <functional>
#include <tuple>

namespace ta::test {
namespace {

constexpr StudyType kE = kNoStudy;

StudyLists NewGroupLists() {
    StudyLists lists(10, std::vector<StudyType>(8, kE));
    lists[0] = {0, 4, kE, kE, kE, kE, kE, kE};
    lists[1][0] = 16;
    lists[2][0] = 23;
    lists[3][0] = 22;
    return lists;
}

class GroupTest : public SettingsFixture {
protected:
    Names Listed() {
        Names names;
        const unsigned count = Repository().GetGroupNameList(names);
        EXPECT_EQ(count, names.size());
        return names;
    }
    StudyLists Lists(const CString& name) {
        StudyLists lists;
        Repository().GetStudyListByGroupName(name, lists);
        return lists;
    }
    /// Another party stores `names` and raises the flag.
    void ChangeElsewhere(const Names& names) {
        memory.names = names;
        memory.reloadFlag = true;
    }
};

TEST_F(GroupTest, AStoreWithoutGroupsGivesTheDefaultGroup) {
    const CString name = text::FromUtf8("預設群組");
    quotes.language["IDS_TECHVIEW-STRING_TAGROUP_DEFAULT_NAME"] = name;
    EXPECT_EQ(Listed(), Names{name});
    EXPECT_EQ(Lists(name), NewGroupLists());
    EXPECT_EQ(Repository().GetUniNumByGroupName(name), 0);
    EXPECT_EQ(Repository().GetStudyCountByGroupName(name), 4);
    EXPECT_EQ(Repository().GetTechWndKeyByGroupName(name), 4);
    EXPECT_NE(Repository().GetDrawInfo(name), nullptr);
    EXPECT_EQ(Repository().GetTaDataInterface(name)->GetRepositories(),
              std::vector{Repository().GetTaDataRepository(name)});
}

TEST_F(GroupTest, WithoutTheGroupCapabilityTheStoredListIsNotRead) {
    memory.names = {{"A", "B"}};
    memoryEntitlement.denied = {Function::TaGroups};
    EXPECT_EQ(Listed().size(), 1u);
    EXPECT_EQ(Repository().FindGroup("A"), 0);
    EndRepository();
    services.tidewrightVersion = true;
    HangIn();
    EXPECT_EQ(Listed(), (Names{"A", "B"}));
}

TEST_F(GroupTest, WithoutAStoreThereAreNoGroups) {
    services.configStore = nullptr;
    HangIn();
    CTaSettingHandle& repository = Repository();
    EXPECT_TRUE(Listed().empty());
    EXPECT_EQ(repository.GetMaxTAGroupCount(), 10);
    EXPECT_EQ(repository.GetSystemDefaultGroup(), "");
    EXPECT_EQ(repository.GetDrawInfo(""), nullptr);
    EXPECT_EQ(repository.AddGroupSetting("A"), 1);
    repository.SetStudyCountByGroupName("A", 2);
    repository.SetTechWndKeyByGroupName("A", 3);
    repository.SaveAllGroupSetting();
    repository.ReloadTASetting();
    EXPECT_EQ(repository.GetStudyCountByGroupName("A"), 2);
    EXPECT_EQ(repository.GetTechWndKeyByGroupName("A"), 3);
}

TEST_F(GroupTest, TheMaximumIsKeptWithinTenToFifty) {
    EXPECT_EQ(Repository().GetMaxTAGroupCount(), 10);
    const std::vector<std::pair<int, int>> cases{{-1, 10}, {5, 10},  {10, 10}, {30, 30},
                                                 {50, 50}, {51, 50}, {80, 50}};
    for (const auto& [stored, maximum] : cases) {
        memory.maxCount = stored;
        EXPECT_EQ(Repository().GetMaxTAGroupCount(), maximum) << stored;
    }
    // The success result is not looked at.
    store.FailOnCall("GetTAGroupMaxCount", CallPlan::kEveryCall);
    EXPECT_EQ(Repository().GetMaxTAGroupCount(), 10);
}

TEST_F(GroupTest, LoadingTakesTheFirstEightUsableStudiesOfAPane) {
    memory.names = {{"A", "B"}};
    memoryEntitlement.denied = {Function::AdvancedStudies};
    // 99 and -1 are refused; ten values remain for eight slots.
    memory.studyLists[{0, "StudyTypeLogKey01"}] = {99, 0, -1, 4, 16, 22, 23, 0, 4, 16, 22, 23};
    memory.studyLists[{0, "StudyTypeLogKey10"}] = {22};
    // Nothing usable in pane 1: the default lists, and pane 7 as loaded.
    memory.studyLists[{1, "StudyTypeLogKey01"}] = {99, 98};
    memory.studyLists[{1, "StudyTypeLogKey02"}] = {22};
    memory.studyLists[{1, "StudyTypeLogKey07"}] = {16};
    const StudyLists a = Lists("A");
    EXPECT_EQ(a[0], (std::vector<StudyType>{0, 4, 16, 22, 23, 0, 4, 16}));
    EXPECT_EQ(a[1], std::vector<StudyType>(8, kE));
    EXPECT_EQ(a[9], (std::vector<StudyType>{22, kE, kE, kE, kE, kE, kE, kE}));
    StudyLists b = NewGroupLists();
    b[6][0] = 16;
    EXPECT_EQ(Lists("B"), b);
    EXPECT_EQ(Repository().GetTechCountByGroup("A"), 2u);
    EXPECT_EQ(Repository().GetTechCountByGroup("B"), 5u);
    EXPECT_EQ(Repository().IsStudyCanUse(99), 0);
    EXPECT_EQ(Repository().IsStudyCanUse(23), 1);
    EXPECT_EQ(Repository().IsStudyCanUse(-1), 0);
}

TEST_F(GroupTest, EveryStudyNumberIsUsableWithTheCapability) {
    memory.names = {{"A"}};
    memory.studyLists[{0, "StudyTypeLogKey01"}] = {7001, -1, 0};
    EXPECT_EQ(Lists("A")[0], (std::vector<StudyType>{7001, 0, kE, kE, kE, kE, kE, kE}));
    EXPECT_EQ(Repository().IsSecondlyDataCanUse(1), 1);
    memoryEntitlement.denied = {Function::SecondData};
    EXPECT_EQ(Repository().IsSecondlyDataCanUse(1), 1) << "asked once";
    EndRepository();
    EXPECT_EQ(Repository().IsSecondlyDataCanUse(1), 0);
    EXPECT_EQ(Repository().IsStudyCanUse(7001), 1);
}

TEST_F(GroupTest, GroupsWithoutANumberGetOneWhileTheyLast) {
    Names names{"Twice", "Twice"};
    while (names.size() < 2'000) {
        names.push_back("G" + std::to_string(names.size()));
    }
    memory.names = names;
    memory.uniNums = {{50, 3}, {51, -1}, {52, 10'000}};
    CTaSettingHandle& repository = Repository();
    // The second of the two took the place of the first, whose number is free again. The number of
    // the fiftieth was given away before it came.
    EXPECT_EQ(repository.GetUniNumByGroupName("Twice"), 1);
    const std::vector<std::pair<CString, int>> numbers{{"G2", 0},    {"G3", 2},    {"G4", 3},
                                                       {"G50", 3},   {"G51", -1},  {"G52", 10'000},
                                                       {"G103", 99}, {"G104", -1}, {"G1999", -1}};
    for (const auto& [name, number] : numbers) {
        EXPECT_EQ(repository.GetUniNumByGroupName(name), number) << name;
    }
    EXPECT_EQ(repository.AddGroupSetting("X"), 1);
    EXPECT_EQ(repository.GetUniNumByGroupName("X"), -1);
    repository.DeleteGroupSetting("G4");
    repository.AddGroupSetting("Y");
    EXPECT_EQ(repository.GetUniNumByGroupName("Y"), -1) << "another group has the number too";
    repository.DeleteGroupSetting("G3");
    memory.maxCount = 11;
    for (const int number : {2, 100, 101}) {
        const CString name = "Z" + std::to_string(number);
        EXPECT_EQ(repository.AddGroupSetting(name), 1);
        EXPECT_EQ(repository.GetUniNumByGroupName(name), number);
    }
}

TEST_F(GroupTest, NotFoundAnswers) {
    memory.names = {{"A", "B"}};
    CTaSettingHandle& repository = Repository();
    EXPECT_EQ(repository.FindGroup("a"), 0);
    EXPECT_EQ(repository.GetGroupIndexByName("B"), 1u);
    EXPECT_EQ(repository.GetGroupIndexByName("?"), 0u);
    EXPECT_EQ(repository.GetGroupIndexByUniNum(1), 1);
    EXPECT_EQ(repository.GetGroupIndexByUniNum(7), -1);
    EXPECT_EQ(repository.GetGroupNameByIndex(2), "");
    EXPECT_EQ(repository.GetGroupNameByUniNum(7), "");
    EXPECT_EQ(repository.GetUniNumByGroupIndex(1), 1);
    EXPECT_EQ(repository.GetUniNumByGroupIndex(2), -1);
    EXPECT_EQ(repository.GetUniNumByGroupIndex(-1), -1);
    EXPECT_EQ(repository.GetUniNumByGroupName("?"), -1);
    EXPECT_EQ(repository.GetStudyCountByGroupName("?"), 1);
    EXPECT_EQ(repository.GetTechWndKeyByGroupName("?"), 1);
    EXPECT_EQ(repository.GetTechCountByGroup("?"), 0u);
    EXPECT_EQ(repository.GetTaDataInterface("?"), nullptr);
    EXPECT_EQ(repository.GetTaDataRepository("?"), nullptr);
    StudyLists lists{{1}};
    EXPECT_EQ(repository.GetStudyListByGroupName("?", lists), 0);
    EXPECT_TRUE(lists.empty());
    Names strings{"left over"};
    EXPECT_EQ(repository.GetStudyParamSettingByGroupName("?", strings), 0);
    EXPECT_TRUE(strings.empty());
    EXPECT_EQ(repository.DeleteGroupSetting("?"), 0);
    EXPECT_EQ(repository.ModifyGroupName("?", "C"), 0);
    store.TakeLines();
    repository.SetStudyCountByGroupName("?", 9);
    repository.SetTechWndKeyByGroupName("?", 9);
    EXPECT_EQ(store.TakeLines(), (Lines{"GetTASettingReloadType()", "GetTASettingReloadType()"}));
}

TEST_F(GroupTest, AddingStoresTheDefaultStringsUnderTheNewIndex) {
    memory.names = {{"A"}};
    memory.paramDefaults = {{"p0", "p4"}};
    memory.shapeDefaults = {{"s0"}};
    CTaSettingHandle& repository = Repository();
    store.TakeLines();
    EXPECT_EQ(repository.AddGroupSetting("B"), 1);
    EXPECT_EQ(store.TakeLines(),
              (Lines{"GetTASettingReloadType()", "GetTAGroupMaxCount()",
                     "SaveTAStudyShapeSetting(1, [s0])", "SaveTAStudyParamSetting(1, [p0 p4])"}));
    EXPECT_EQ(Lists("B"), NewGroupLists());
    const auto* drawInfo = dynamic_cast<MemoryDrawInfo*>(repository.GetDrawInfo("B"));
    ASSERT_NE(drawInfo, nullptr);
    EXPECT_EQ(drawInfo->paramModes, std::vector{int{kDrawInfoReplace}});
    EXPECT_EQ(drawInfo->shapeModes, std::vector{int{kDrawInfoReplace}});
    store.TakeLines();
    EXPECT_EQ(repository.AddGroupSetting("B"), 0);
    EXPECT_EQ(store.TakeLines(), Lines{"GetTASettingReloadType()"});
    EXPECT_EQ(Listed(), (Names{"A", "B"}));
}

TEST_F(GroupTest, AnUnlistedRecordStaysInMemoryOnlyUntilItGivesWay) {
    memory.names = {{"A", "B", "C"}};
    memory.showCounts = {{0, 5}};
    memory.wndShowKeys = {{0, 6}};
    CTaSettingHandle& repository = Repository();
    Names names{"A"};
    repository.SetGroupNameList(names);
    repository.SetStudyCountByGroupName("B", 9);
    repository.SetTechWndKeyByGroupName("B", 9);
    EXPECT_EQ(memory.showCounts, (std::map<unsigned, int>{{0, 5}})) << "not over the first group's";
    EXPECT_EQ(memory.wndShowKeys, (std::map<unsigned, int>{{0, 6}}));
    EXPECT_EQ(repository.GetStudyCountByGroupName("B"), 9);
    EXPECT_EQ(repository.GetTechWndKeyByGroupName("B"), 9);
    EXPECT_EQ(repository.GetGroupIndexByUniNum(1), 0) << "an unlisted record answers as the first";
    EXPECT_EQ(repository.AddGroupSetting("B"), 1);
    EXPECT_EQ(repository.GetStudyCountByGroupName("B"), 4);
    EXPECT_EQ(repository.GetUniNumByGroupName("B"), 1);
    repository.ClearNoUseGroup();
    EXPECT_EQ(repository.GetUniNumByGroupName("C"), -1);
    EXPECT_EQ(Listed(), (Names{"A", "B"}));
}

TEST_F(GroupTest, RenamingKeepsPlaceNumberAndObjects) {
    memory.names = {{"A", "B", "C"}};
    CTaSettingHandle& repository = Repository();
    const ChartBaseDrawInfo* drawInfo = repository.GetDrawInfo("B");
    repository.SetStudyCountByGroupName("B", 7);
    EXPECT_EQ(repository.ModifyGroupName("B", "C"), 0);
    EXPECT_EQ(repository.ModifyGroupName("B", "B"), 0);
    EXPECT_EQ(repository.ModifyGroupName("B", "b"), 1);
    EXPECT_EQ(Listed(), (Names{"A", "b", "C"}));
    EXPECT_EQ(repository.GetUniNumByGroupName("b"), 1);
    EXPECT_EQ(repository.GetStudyCountByGroupName("b"), 7);
    EXPECT_EQ(repository.GetDrawInfo("b"), drawInfo);
    EXPECT_EQ(repository.GetUniNumByGroupName("B"), -1);
    // Onto a name that only an unlisted record has.
    Names names{"A", "b"};
    repository.SetGroupNameList(names);
    EXPECT_EQ(repository.ModifyGroupName("C", "D"), 0) << "an unlisted name is unknown";
    EXPECT_EQ(repository.ModifyGroupName("b", "C"), 1);
    EXPECT_EQ(repository.GetUniNumByGroupName("C"), 1);
    EXPECT_EQ(MemoryDrawInfo::LiveCount(), 2);
}

TEST_F(GroupTest, NamesThatDifferInTheCaseOfASecondHalfAreTwoGroups) {
    const CString upper = "\xA4\x41";
    const CString lower = "\xA4\x61";
    const CString backslash = "\xA5\x5C\xB3\x5C";  // 功許, both second halves 0x5C
    memory.names = {{lower, upper, backslash}};
    CTaSettingHandle& repository = Repository();
    EXPECT_EQ(repository.GetGroupIndexByName(upper), 1u);
    EXPECT_EQ(repository.GetUniNumByGroupName(lower), 0);
    EXPECT_EQ(repository.GetGroupNameByIndex(2), backslash);
    GroupRecords all;
    repository.GetAllDrawInfo(all);
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0].first, upper);
    EXPECT_EQ(all[1].first, lower);
    EXPECT_EQ(all[2].first, backslash);
}

TEST_F(GroupTest, StudyListsAreBroughtIntoShape) {
    memory.names = {{"A"}};
    CTaSettingHandle& repository = Repository();
    StudyLists given(12, std::vector<StudyType>{5});
    given[0] = {-1, 1, -1, 2, 3, 4, 5, 6, 7, 8, 9};
    given[1] = {};
    repository.SetStudyListByGroupName("A", given);
    const StudyLists lists = Lists("A");
    ASSERT_EQ(lists.size(), 10u);
    EXPECT_EQ(lists[0], (std::vector<StudyType>{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(lists[1], std::vector<StudyType>(8, kE));
    EXPECT_EQ(lists[9].front(), 5);
    repository.SetStudyListByGroupName("A", {});
    EXPECT_EQ(Lists("A"), StudyLists(10, std::vector<StudyType>(8, kE)));
    EXPECT_EQ(repository.GetTechCountByGroup("A"), 0u);
}

TEST_F(GroupTest, AReloadTakesTheStoredStateAndDropsEditsAndObjects) {
    memory.names = {{"A", "B"}};
    CTaSettingHandle& repository = Repository();
    repository.AddGroupSetting("Unsaved");
    EXPECT_EQ(MemoryDrawInfo::LiveCount(), 3);
    repository.ReloadTASetting();
    EXPECT_EQ(repository.FindGroup("Unsaved"), 1) << "no flag, no reload";
    ChangeElsewhere({"B"});
    store.TakeLines();
    EXPECT_EQ(repository.FindGroup("Unsaved"), 0);
    Lines lines = store.TakeLines();
    lines.resize(3);
    EXPECT_EQ(lines, (Lines{"GetTASettingReloadType()", "SetTASettingReloadType(false)",
                            "GetTAGroupMaxCount()"}))
        << "another party's commit behind the flag raises it again";
    EXPECT_EQ(Listed(), Names{"B"});
    EXPECT_EQ(MemoryDrawInfo::LiveCount(), 1);
    // A flag that cannot be read is no flag.
    ChangeElsewhere({"C"});
    store.FailOnCall("GetTASettingReloadType", CallPlan::kEveryCall);
    EXPECT_EQ(repository.FindGroup("B"), 1);
}

using Handle = CTaSettingHandle;
using Operation = std::function<void(Handle&)>;

void Preset(CString& text) {
    text = "A";
}
template <class Value>
void Preset(Value&) {}

/// Calls an operation of the repository with "A" for each text and empty values for all else.
template <class... Parameters>
Operation Plain(auto operation) {
    return [operation](Handle& repository) {
        std::tuple<std::decay_t<Parameters>...> values;
        std::apply([](auto&... each) { (Preset(each), ...); }, values);
        std::apply([&](auto&... each) { (repository.*operation)(each...); }, values);
    };
}
template <class Result, class... Parameters>
Operation Of(Result (Handle::*operation)(Parameters...)) {
    return Plain<Parameters...>(operation);
}
template <class Result, class... Parameters>
Operation Of(Result (Handle::*operation)(Parameters...) const) {
    return Plain<Parameters...>(operation);
}
std::vector<Operation> PlainCalls(auto... operations) {
    return {Of(operations)...};
}

const auto kLookingForAReload = PlainCalls(
    &Handle::ReloadTASetting, &Handle::FindGroup, &Handle::GetGroupIndexByName,
    &Handle::GetGroupIndexByUniNum, &Handle::GetGroupNameByIndex, &Handle::GetUniNumByGroupIndex,
    &Handle::GetGroupNameList, &Handle::SetGroupNameList, &Handle::GetSystemDefaultGroup,
    &Handle::AddGroupSetting, &Handle::DeleteGroupSetting, &Handle::ModifyGroupName,
    &Handle::ClearNoUseGroup, &Handle::GetStudyCountByGroupName, &Handle::SetStudyCountByGroupName,
    &Handle::GetTechCountByGroup, &Handle::GetStudyListByGroupName,
    &Handle::SetStudyListByGroupName, &Handle::GetTechWndKeyByGroupName,
    &Handle::SetTechWndKeyByGroupName, &Handle::GetDrawInfo, &Handle::GetTaDataInterface,
    &Handle::GetTaDataRepository, &Handle::GetAllDrawInfo, &Handle::SetAllDrawInfo,
    &Handle::GetAllStudyParamSetting, &Handle::GetAllStudyShapeSetting,
    &Handle::SetAllStudyParamSetting, &Handle::SetAllStudyShapeSetting,
    &Handle::GetStudyParamSettingByGroupName, &Handle::GetStudyShapeSettingByGroupName,
    &Handle::SetStudyParamSettingByGroupName, &Handle::SetStudyShapeSettingByGroupName,
    &Handle::DeleteAllParam, &Handle::vGetStudyInfoVec, &Handle::SaveAllGroupSetting,
    &Handle::AddTrendLineData, &Handle::SetTrendLineData, &Handle::GetTrendLineData,
    &Handle::GetAllTrendLineData,
    static_cast<unsigned (Handle::*)(const CString&)>(&Handle::GetTrendLineCount),
    static_cast<unsigned (Handle::*)(const CString&, const CString&)>(&Handle::GetTrendLineCount),
    &Handle::GetTrendLineSymbolCount, &Handle::ClearAllTrendLine,
    &Handle::GetTrendLineSymbolUpdTime, &Handle::UpdateTrendLineSymbolTime,
    &Handle::StudyTypeToStudyName, &Handle::StudyNameToStudyType, &Handle::GetTAViewGroupSetting);

const auto kNotLookingForAReload = PlainCalls(
    &Handle::GetGroupNameByUniNum, &Handle::GetUniNumByGroupName, &Handle::GetMaxTAGroupCount,
    &Handle::GetGroupAuthorize, &Handle::IsStudyCanUse, &Handle::IsSecondlyDataCanUse,
    &Handle::ReleaseTrendLine, &Handle::SaveTrendLineData, &Handle::GetTATrendLineMaxCount,
    &Handle::RemoveTechViewPtr, &Handle::SendMsg2AllTechView, &Handle::SendTLineUpdate2AllTechView,
    &Handle::PackTADataTypeString, &Handle::TransSystemLayoutString);

TEST_F(GroupTest, EveryOperationLooksForAReloadFirstUnlessItSaysOtherwise) {
    const auto expect = [this](const std::vector<Operation>& operations, bool reloads) {
        for (std::size_t i = 0; i < operations.size(); ++i) {
            memory.names = {{"A", "B"}};
            EndRepository();
            Repository().AddGroupSetting("Unsaved");
            ChangeElsewhere({"A", "B"});
            operations[i](Repository());
            // Neither look reloads.
            EXPECT_EQ(memory.reloadFlag, !reloads) << "operation " << i;
            EXPECT_EQ(Repository().GetUniNumByGroupName("Unsaved") == -1, reloads) << i;
            memory.reloadFlag = false;
        }
    };
    expect(kLookingForAReload, true);
    expect(kNotLookingForAReload, false);
    // Nor does one look while somebody holds reloads off, inside another hold or after it.
    expect({[](Handle& repository) {
               const Handle::ReloadHold outer(repository);
               { const Handle::ReloadHold inner(repository); }
               repository.SaveAllGroupSetting();
           }},
           false);
}

TEST_F(GroupTest, AListedNameAlwaysHasItsGroup) {
    memory.names = {{"A", "B"}};
    memory.showCounts = {{0, 5}, {1, 6}};
    memory.paramDefaults = {{"p"}};
    memory.shapeDefaults = {{"s"}};
    CTaSettingHandle& repository = Repository();
    store.TakeLines();
    Names names{"New", "A"};
    repository.SetGroupNameList(names);
    EXPECT_EQ(store.TakeLines(), (Lines{"GetTASettingReloadType()", "GetTAGroupMaxCount()",
                                        "SaveTAGroupNameList([New A])"}));
    EXPECT_EQ(repository.GetUniNumByGroupName("New"), 2);
    EXPECT_EQ(Lists("New"), NewGroupLists());
    repository.SaveAllGroupSetting();
    EXPECT_EQ(memory.showCounts, (std::map<unsigned, int>{{0, 4}, {1, 5}}));
    EXPECT_EQ(memory.params[0], Names{"p"});
    EXPECT_EQ(memory.shapes[0], Names{"s"});
}

TEST_F(GroupTest, SetAllDrawInfoMakesTheTableEqualItsInput) {
    memory.names = {{"A", "B"}};
    CTaSettingHandle& repository = Repository();
    GroupRecords all;
    repository.GetAllDrawInfo(all);
    const GroupRecords dropped{all[1]};
    all.pop_back();
    all[0].second.iStudyShowCount = 8;
    all[0].second.iUniNum = 1;
    repository.SetAllDrawInfo(all);
    EXPECT_EQ(repository.GetStudyCountByGroupName("A"), 8);
    repository.AddGroupSetting("N");
    EXPECT_EQ(repository.GetUniNumByGroupName("N"), 0);
    repository.DeleteGroupSetting("N");
    EXPECT_EQ(repository.GetDrawInfo("A"), all[0].second.pDrawInfo);
    EXPECT_EQ(repository.GetUniNumByGroupName("B"), -1);
    // The objects of the dropped entry are the caller's now.
    EXPECT_EQ(MemoryDrawInfo::LiveCount(), 2);
    delete dropped[0].second.pDrawInfo;
    delete dropped[0].second.pDataRepository;
}

TEST_F(GroupTest, SetAllDrawInfoSurvivesAReloadThatDestroysItsInput) {
    memory.names = {{"A", "B"}};
    CTaSettingHandle& repository = Repository();
    GroupRecords all;
    repository.GetAllDrawInfo(all);
    all[1].second.iStudyShowCount = 8;
    // One entry brings a draw info of its own and keeps the old data repository.
    auto* own = new MemoryDrawInfo({});
    all[0].second.pDrawInfo = own;
    ChangeElsewhere({"A", "B"});
    repository.SetAllDrawInfo(all);
    EXPECT_EQ(repository.GetStudyCountByGroupName("B"), 8);
    EXPECT_EQ(repository.GetDrawInfo("A"), own);
    EXPECT_EQ(repository.GetTaDataInterface("A")->GetRepositories(),
              std::vector{repository.GetTaDataRepository("A")});
    repository.GetTaDataRepository("A")->vSetBars({}, std::make_shared<BarSeries>());
    auto* drawInfo = dynamic_cast<MemoryDrawInfo*>(repository.GetDrawInfo("B"));
    ASSERT_NE(drawInfo, nullptr);
    drawInfo->params = {"usable"};
    EXPECT_EQ(MemoryDrawInfo::LiveCount(), 2);
}

TEST_F(GroupTest, AChartModuleThatGivesNothingLeavesGroupsWithoutDrawInfo) {
    memory.names = {{"A", "B"}};
    chartModule.FailOnCall("MakeTaDrawInfo", 1);
    CTaSettingHandle& repository = Repository();
    EXPECT_EQ(repository.GetDrawInfo("A"), nullptr);
    EXPECT_NE(repository.GetDrawInfo("B"), nullptr);
    EXPECT_NE(repository.GetTaDataRepository("A"), nullptr);
    SettingsByGroup strings;
    EXPECT_EQ(repository.GetAllStudyParamSetting(strings), 1);
    ASSERT_EQ(strings.size(), 1u);
    EXPECT_EQ(strings[0].first, "B");
    repository.DeleteAllParam("A");
    EXPECT_EQ(repository.StudyTypeToStudyName(0), "") << "the default group has no draw info";
    EXPECT_EQ(repository.StudyNameToStudyType("X"), 0);
}

TEST_F(GroupTest, TheHiddenWindowIsAChildOfTheFrame) {
    EXPECT_TRUE(Repository().IsWindow());
    EXPECT_EQ(Repository().GetParent(), &frame);
    EXPECT_EQ(chartModule.windows, std::vector<CWnd*>{&Repository()});
}

// ---- Telling the chart views ----

class NotificationTest : public GroupTest {
protected:
    ViewLog log;
    RecordingView first{"1", log};
    RecordingView second{"2", log};
    RecordingView third{"3", log};

    static std::pair<std::string, SentMessage> Group(const char* view, std::uintptr_t index) {
        return {view, {kGroupChangeMessage, index, 0}};
    }
    static std::pair<std::string, SentMessage> Lines(const char* view) {
        return {view, {kTrendLineChangeMessage, 0, 0}};
    }
};

TEST_F(NotificationTest, AReloadTellsGroupByGroupAndThenOfTheLines) {
    CTaSettingHandle& repository = Repository();
    for (RecordingView* view : {&first, &second, &third, &first}) {
        repository.AddTechViewPtr(view);
    }
    repository.AddTechViewPtr(nullptr);
    ChangeElsewhere({"A", "B"});
    repository.ReloadTASetting();
    EXPECT_EQ(log, (ViewLog{Group("1", 0), Group("2", 0), Group("3", 0), Group("1", 1),
                            Group("2", 1), Group("3", 1), Lines("1"), Lines("2"), Lines("3")}));
    log.clear();
    repository.RemoveTechViewPtr(&first);
    repository.RemoveTechViewPtr(&first);
    repository.SendMsg2AllTechView(kGroupChangeMessage, 5);
    EXPECT_EQ(log, (ViewLog{Group("2", 5), Group("3", 5)}));
}

TEST_F(NotificationTest, AViewMayCallBackWhileItIsTold) {
    CTaSettingHandle& repository = Repository();
    repository.AddTechViewPtr(&first);
    repository.AddTechViewPtr(&second);
    int seen = 0;
    first.onMessage = [&](const SentMessage& sent) {
        if (sent.message == kGroupChangeMessage) {
            seen += repository.GetStudyCountByGroupName("A") == 4 ? 1 : 100;
        }
        // Another party is quick: the next reload comes from inside this one.
        if (seen == 1) {
            ++seen;
            ChangeElsewhere({"A"});
            repository.FindGroup("A");
        }
    };
    ChangeElsewhere({"A", "B", "C"});
    repository.ReloadTASetting();
    EXPECT_EQ(Listed(), Names{"A"});
    // The inner reload tells of its one group; the outer one then has no further group to tell of.
    EXPECT_EQ(log, (ViewLog{Group("1", 0), Group("1", 0), Group("2", 0), Lines("1"), Lines("2"),
                            Group("2", 0), Lines("1"), Lines("2")}));
}

TEST_F(NotificationTest, AFlagThatCannotBeLoweredBringsOneReloadAtATime) {
    CTaSettingHandle& repository = Repository();
    repository.AddTechViewPtr(&first);
    store.FailOnCall("SetTASettingReloadType", CallPlan::kEveryCall);
    ChangeElsewhere({"A"});
    first.onMessage = [&](const SentMessage&) { repository.FindGroup("A"); };
    repository.ReloadTASetting();
    EXPECT_EQ(log, (ViewLog{Group("1", 0), Lines("1")}));
}

TEST_F(NotificationTest, AViewThatUnregistersItselfIsTolerated) {
    CTaSettingHandle& repository = Repository();
    for (RecordingView* view : {&first, &second, &third}) {
        repository.AddTechViewPtr(view);
    }
    // The one behind it moves up and is passed over, once.
    first.onMessage = [&](const SentMessage&) { repository.RemoveTechViewPtr(&first); };
    repository.SendTLineUpdate2AllTechView();
    repository.SendTLineUpdate2AllTechView();
    third.onMessage = [&](const SentMessage&) { repository.RemoveTechViewPtr(&third); };
    repository.SendMsg2AllTechView(kGroupChangeMessage, 1);
    EXPECT_EQ(log, (ViewLog{Lines("1"), Lines("3"), Lines("2"), Lines("3"), Group("2", 1),
                            Group("3", 1)}));
}

}  // namespace
}  // namespace ta::test
