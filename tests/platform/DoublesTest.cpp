// The doubles that other tests judge by: what they write down, when they fail.

#include "platform/Text.h"
#include "tests/support/MemoryChart.h"
#include "tests/support/MemoryConfigStore.h"
#include "tests/support/MemoryQuotes.h"
#include "tests/support/RecordingConfigStore.h"

#include <gtest/gtest.h>

namespace ta::test {
namespace {

using Lines = std::vector<std::string>;

TEST(RecordingConfigStore, WritesDownWhatIsHandedIn) {
    MemoryConfigStore memory;
    RecordingConfigStore store(memory);
    std::vector<CString> strings;
    store.SaveTAGroupNameList({text::FromUtf8("預設"), "", "b"});
    store.SaveTAGroupStudyList(0, "StudyTypeLogKey01", {0, 4, -1});
    store.LoadTAStudyParamSetting(2, strings);
    store.SaveTASettingChartGrid(1, false);
    store.SaveTATrendLine("MXTechView", "0a/2330", {{"k", {"x", "y"}}, {"l", {}}});
    store.SaveTATrendLineSymbolUpdTime("MXTechView", 10, "2330", "2024-01-31");
    store.PackFile();
    const Lines expected{"SaveTAGroupNameList([預設  b])",
                         "SaveTAGroupStudyList(0, StudyTypeLogKey01, [0 4 -1])",
                         "LoadTAStudyParamSetting(2)",
                         "SaveTASettingChartGrid(1, false)",
                         "SaveTATrendLine(MXTechView, 0a/2330, [k=[x y] l=[]])",
                         "SaveTATrendLineSymbolUpdTime(MXTechView, 10, 2330, 2024-01-31)",
                         "PackFile()"};
    EXPECT_EQ(store.TakeLines(), expected);
    EXPECT_TRUE(store.lines.empty());
}

TEST(RecordingConfigStore, FailsAndInterruptsAsPlanned) {
    MemoryConfigStore memory;
    memory.uniNums[0] = 7;
    RecordingConfigStore store(memory);
    store.FailOnCall(2);
    store.FailOnCall("SaveTAGroupUniNum", 2);
    store.FailOnCall("PackFile", CallPlan::kEveryCall);
    store.RunBefore("SaveTAGroupUniNum", 1, [&memory] { memory.reloadFlag = true; });

    int uniNum = 1;
    EXPECT_TRUE(store.LoadTAGroupUniNum(0, uniNum));
    EXPECT_EQ(uniNum, 7);
    uniNum = 1;
    EXPECT_FALSE(store.LoadTAGroupUniNum(0, uniNum)) << "The second of all calls.";
    EXPECT_EQ(uniNum, 1);
    EXPECT_FALSE(memory.reloadFlag);
    EXPECT_TRUE(store.SaveTAGroupUniNum(0, 8));
    EXPECT_TRUE(memory.reloadFlag);
    EXPECT_FALSE(store.SaveTAGroupUniNum(0, 9)) << "The second of its name.";
    EXPECT_EQ(memory.uniNums[0], 8);
    store.PackFile();
    EXPECT_EQ(memory.packCount, 0);
    EXPECT_EQ(store.Calls(), 5);
    EXPECT_EQ(store.Calls("SaveTAGroupUniNum"), 2);
    store.Reset();
    store.PackFile();
    EXPECT_EQ(memory.packCount, 1);
    EXPECT_EQ(store.Calls(), 1);
}

/// Saves a value for two groups, reads both back, and sees that a third group has none.
template <class T>
void ExpectKept(SMXCfgIO2& store, bool (SMXCfgIO2::*save)(unsigned, T),
                bool (SMXCfgIO2::*load)(unsigned, std::remove_cvref_t<T>&),
                const std::remove_cvref_t<T>& first, const std::remove_cvref_t<T>& second) {
    std::remove_cvref_t<T> value = second;
    EXPECT_FALSE((store.*load)(0, value));
    EXPECT_EQ(value, second) << "A failed load must not touch its output.";
    EXPECT_TRUE((store.*save)(0, first));
    EXPECT_TRUE((store.*save)(1, second));
    EXPECT_TRUE((store.*load)(0, value));
    EXPECT_EQ(value, first);
    EXPECT_TRUE((store.*load)(1, value));
    EXPECT_EQ(value, second);
    EXPECT_FALSE((store.*load)(2, value));
}

TEST(MemoryConfigStore, KeepsEachValueApartFromTheOthers) {
    MemoryConfigStore memory;
    RecordingConfigStore store(memory);
    using S = SMXCfgIO2;
    const std::vector<CString> a{"a", "\xA5\x5C"};
    const std::vector<CString> b{};
    ExpectKept(store, &S::SaveTAGroupUniNum, &S::LoadTAGroupUniNum, 1, 2);
    ExpectKept(store, &S::SaveTAStudyShowCount, &S::LoadTAStudyShowCount, 3, 4);
    ExpectKept(store, &S::SaveTATechWndShowKey, &S::LoadTATechWndShowKey, 5, 6);
    ExpectKept(store, &S::SaveTAStudyParamSetting, &S::LoadTAStudyParamSetting, a, b);
    ExpectKept(store, &S::SaveTAStudyShapeSetting, &S::LoadTAStudyShapeSetting, a, b);
    ExpectKept(store, &S::SaveTASettingScalePos, &S::LoadTASettingScalePos, 7U, 8U);
    ExpectKept(store, &S::SaveTASettingChartGrid, &S::LoadTASettingChartGrid, true, false);
    ExpectKept(store, &S::SaveTASettingCursor, &S::LoadTASettingCursor, true, false);
    ExpectKept(store, &S::SaveTASettingCursorOld, &S::LoadTASettingCursorOld, true, false);
    ExpectKept(store, &S::SaveTASettingShowTAInfo, &S::LoadTASettingShowTAInfo, true, false);
    ExpectKept(store, &S::SaveTASettingCrossLine, &S::LoadTASettingCrossLine, true, false);
    ExpectKept(store, &S::SaveTASettingLowIdx, &S::LoadTASettingLowIdx, true, false);
    ExpectKept(store, &S::SaveTASettingHighLow, &S::LoadTASettingHighLow, true, false);
    ExpectKept(store, &S::SaveTASettingCDP, &S::LoadTASettingCDP, true, false);
    ExpectKept(store, &S::SaveTASettingCursorLineLockMode, &S::LoadTASettingCursorLineLockMode, 9U,
               10U);
    ExpectKept(store, &S::SaveTASettingCursorMoveStyle, &S::LoadTASettingCursorMoveStyle, 11U, 12U);
}

TEST(MemoryConfigStore, DropsASymbolWhoseLinesAreAllEmpty) {
    MemoryConfigStore store;
    std::vector<CString> keys{"before"};
    EXPECT_FALSE(store.LoadTATrendLineSettingClass(keys));
    EXPECT_EQ(keys, std::vector<CString>{"before"});
    store.SaveTATrendLine("A", "0a/1", {{"k", {"x"}}});
    store.SaveTATrendLine("A", "0a/2", {{"k", {}}, {"l", {"y"}}});
    store.SaveTATrendLine("A", "0a/1", {{"k", {}}, {"l", {}}});
    EXPECT_TRUE(store.LoadTATrendLineSettingSymbols("A", keys));
    EXPECT_EQ(keys, std::vector<CString>{"0a/2"});
    store.SaveTATrendLine("A", "0a/2", {});
    EXPECT_FALSE(store.LoadTATrendLineSettingClass(keys));
}

TEST(MemoryChartModule, CountsLivingDrawInfosAndFailsAsPlanned) {
    const int before = MemoryDrawInfo::LiveCount();
    MemoryChartModule memory;
    FailingChartModule module(memory);
    module.FailOnCall(2);
    CWnd window;
    auto info = module.MakeTaDrawInfo(window);
    EXPECT_EQ(module.MakeTaDrawInfo(window), nullptr);
    EXPECT_EQ(MemoryDrawInfo::LiveCount(), before + 1);
    std::vector<StudyInfo*> studies(7);
    info->vGetStudyInfoVec(studies, 3);
    ASSERT_EQ(studies.size(), 2U);
    EXPECT_EQ(studies[1]->GetStudyType(), 23);
    info->vGetStudyInfoVec(studies, 0);
    EXPECT_TRUE(studies.empty());
    info.reset();
    EXPECT_EQ(MemoryDrawInfo::LiveCount(), before);
}

TEST(MemoryQuotes, FallsBackToTheMarketsItemsAndFailsAsPlanned) {
    MemoryQuotes memory;
    memory.dailyItems[{16, ""}] = {1, 2};
    memory.dailyItems[{16, "NONE"}] = {};
    FailingQuotes quotes(memory);
    quotes.FailOnCall("bGetTADailyItemNoByService", 3);
    BKQuoteInterface::Items items;
    EXPECT_TRUE(quotes.bGetTADailyItemNoByService(items, 16, "2330"));
    EXPECT_EQ(items.size(), 2U);
    EXPECT_FALSE(quotes.bGetTADailyItemNoByService(items, 16, "NONE"));
    EXPECT_TRUE(items.empty());
    EXPECT_FALSE(quotes.bGetTADailyItemNoByService(items, 16, "2330"));
    EXPECT_TRUE(quotes.bGetTADailyItemNoByService(items, 16, "2330"));
}

}  // namespace
}  // namespace ta::test
