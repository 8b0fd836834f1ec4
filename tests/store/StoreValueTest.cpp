#include "tests/store/StoreFixture.h"

#include <functional>
#include <map>
#include <random>
#include <tuple>

namespace ta::test {

namespace {

const CString kClass = "MXTechView";
const CString kOtherClass = "MXTechView2";

/// Text with every byte that is special somewhere: halves of double-byte characters, blanks, NUL.
const CString kWildText("\xa5\x5c\xa1\x5d '\"%\\\0\xff\n", 12);

TrendLinesByType OneLine(const CString& data) {
    return {{"0a/2330/0000/0/x", {data}}};
}

using Texts = std::vector<CString>;
using Studies = std::vector<std::int32_t>;

/// Calls `visit` with each pair of operations, a value of their own and where it goes.
template <typename Visit>
void ForEachOperation(int seed, const Visit& visit) {
    using S = SqliteStore;
    const auto number = static_cast<std::uint32_t>(seed) + 0xfffffff0u;
    const CString symbolKey = "0a/2330";
    visit(&S::SetTAGroupMaxCount, &S::GetTAGroupMaxCount, seed);
    visit(&S::SaveTAGroupNameList, &S::LoadTAGroupNameList,
          Texts{"", kWildText, CString(70000, 'n')});
    visit(&S::SaveTAGroupStudyList, &S::LoadTAGroupStudyList,
          Studies{seed, -1, INT32_MIN, INT32_MAX}, 3, "StudyTypeLogKey01");
    visit(&S::SaveTAGroupStudyList, &S::LoadTAGroupStudyList, Studies{}, 3, "StudyTypeLogKey10");
    visit(&S::SaveTAGroupUniNum, &S::LoadTAGroupUniNum, -seed, 3);
    visit(&S::SaveTAStudyParamSetting, &S::LoadTAStudyParamSetting, Texts{kWildText, ""}, 3);
    visit(&S::SaveTAStudyShapeSetting, &S::LoadTAStudyShapeSetting, Texts{}, 3);
    visit(&S::SaveTAStudyShowCount, &S::LoadTAStudyShowCount, seed + 1, 3);
    visit(&S::SaveTATechWndShowKey, &S::LoadTATechWndShowKey, seed + 2, 3);
    visit(&S::SaveTASettingScalePos, &S::LoadTASettingScalePos, number, 3);
    visit(&S::SaveTASettingCursorLineLockMode, &S::LoadTASettingCursorLineLockMode, number + 1, 3);
    visit(&S::SaveTASettingCursorMoveStyle, &S::LoadTASettingCursorMoveStyle, number + 2, 3);
    const auto bit = [seed](int n) { return (seed >> n) % 2 != 0; };
    visit(&S::SaveTASettingChartGrid, &S::LoadTASettingChartGrid, bit(0), 3);
    visit(&S::SaveTASettingCursor, &S::LoadTASettingCursor, bit(1), 3);
    visit(&S::SaveTASettingCursorOld, &S::LoadTASettingCursorOld, bit(2), 3);
    visit(&S::SaveTASettingShowTAInfo, &S::LoadTASettingShowTAInfo, bit(3), 3);
    visit(&S::SaveTASettingCrossLine, &S::LoadTASettingCrossLine, bit(4), 3);
    visit(&S::SaveTASettingLowIdx, &S::LoadTASettingLowIdx, bit(5), 3);
    visit(&S::SaveTASettingHighLow, &S::LoadTASettingHighLow, bit(6), 3);
    visit(&S::SaveTASettingCDP, &S::LoadTASettingCDP, bit(7), 3);
    visit(&S::SetTAViewGroupSetting, &S::GetTAViewGroupSetting,
          S::ViewGroups{{"view###1", seed}, {kWildText, -1}}, -7);
    visit(&S::SaveTATrendLine, &S::LoadTATrendLine,
          TrendLinesByType{{"key", {kWildText, ""}}, {"none", {}}}, kClass, symbolKey);
    visit(&S::SaveTATrendLineSymbolUpdTime, &S::LoadTATrendLineSymbolUpdTime, CString("2024-02-29"),
          kClass, '\x0a', "2330");
}

void SaveAll(SqliteStore& store, int seed) {
    ForEachOperation(seed, [&](auto save, auto, const auto& value, const auto&... where) {
        EXPECT_TRUE(std::invoke(save, store, where..., value));
    });
}

void CheckAll(SqliteStore& store, int seed) {
    int operation = 0;
    ForEachOperation(seed, [&](auto, auto load, const auto& value, const auto&... where) {
        SCOPED_TRACE(operation++);
        std::decay_t<decltype(value)> found{};
        if constexpr (requires { found.emplace_back(); }) {
            found.emplace_back();  // to be replaced
        }
        EXPECT_TRUE(std::invoke(load, store, where..., found));
        EXPECT_EQ(found, value);
    });
}

}  // namespace

using StoreValueTest = StoreTest;

TEST_F(StoreValueTest, EveryOperationGivesBackItsValuePendingPackedAndReopened) {
    for (const int seed : {1, 0x55, 0xaa}) {
        {
            TestStore store(Path());
            SaveAll(store, seed);
            CheckAll(store, seed);
            store.PackFile();
            CheckAll(store, seed);
            EXPECT_TRUE(store.errors.empty());
        }
        TestStore store(Path());
        EXPECT_EQ(store.opened.state, OpenResult::Opened);
        CheckAll(store, seed);
    }
}

TEST_F(StoreValueTest, AMissingValueIsFalseAndLeavesTheOutput) {
    TestStore store(Path());
    EXPECT_EQ(store.opened.state, OpenResult::Created);
    int number = 17;
    std::vector<CString> texts{"kept"};
    TrendLinesByType lines = OneLine("kept");
    EXPECT_FALSE(store.GetTAGroupMaxCount(number));
    EXPECT_FALSE(store.LoadTAGroupUniNum(0, number));
    EXPECT_FALSE(store.LoadTAGroupNameList(texts));
    EXPECT_FALSE(store.LoadTAStudyParamDefaultSetting(texts));
    EXPECT_FALSE(store.LoadTATrendLine(kClass, "0a/2330", lines));
    EXPECT_EQ(number, 17);
    EXPECT_EQ(texts, std::vector<CString>{"kept"});
    EXPECT_EQ(lines, OneLine("kept"));
}

TEST_F(StoreValueTest, BytesThatAreNoValueAreMissingAndStayUntilOverwritten) {
    // Too short, too long, a count or a length past the end, no flag, a list that ends early.
    const char* const garbled[] = {"x''",
                                   "x'0102'",
                                   "x'0100000000'",
                                   "x'ffffffffff'",
                                   "x'0100000005000000'",
                                   "x'02'",
                                   "x'020000000000000000'",
                                   "zeroblob(100000)"};
    Make(1);
    for (const char* bytes : garbled) {
        const std::string sql =
            "UPDATE settings SET value = " + std::string(bytes) + " WHERE kind IN (12, 14, 50)";
        RunSql(Path(), sql);
        TestStore store(Path());
        EXPECT_EQ(store.opened.state, OpenResult::Opened);
        std::vector<CString> texts;
        TrendLinesByType lines;
        int count = 9;
        EXPECT_FALSE(store.LoadTAStudyParamSetting(0, texts)) << bytes;
        EXPECT_FALSE(store.LoadTAStudyShowCount(0, count)) << bytes;
        EXPECT_FALSE(store.LoadTATrendLine(kClass, "0a/1001", lines)) << bytes;
        EXPECT_EQ(count, 9);
        EXPECT_TRUE(store.LoadTAGroupUniNum(0, count));
        store.SaveTAGroupUniNum(0, 5);
        store.PackFile();
        EXPECT_FALSE(store.LoadTAStudyShowCount(0, count)) << bytes;
    }
    TestStore store(Path());
    SaveGeneration(store, 2);
    store.PackFile();
    EXPECT_EQ(LoadGeneration(store), 2);
}

// The store beside a plain model of it, through the same random operations.
TEST_F(StoreValueTest, TrendLinesFollowEveryOrderOfWriting) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const auto pick = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };

    // The line or the date of a class's symbol.
    enum Part { kLine, kDate };
    using State = std::map<std::tuple<CString, CString, Part>, CString>;
    State seen;
    State committed;
    auto store = std::make_unique<TestStore>(Path());
    for (int step = 0; step < 1500; ++step) {
        const CString chartClass = pick(2) == 0 ? kClass : kOtherClass;
        const CString symbol = std::to_string(pick(4));
        const CString value = std::to_string(step);
        switch (pick(9)) {
            case 0:
                store->SaveTATrendLine(chartClass, "0a/" + symbol, {{"type", {}}});
                seen.erase({chartClass, symbol, kLine});
                seen.erase({chartClass, symbol, kDate});
                break;
            case 1:
                store->RemoveAllTrendLineData(chartClass);
                std::erase_if(
                    seen, [&](const auto& each) { return std::get<0>(each.first) == chartClass; });
                break;
            case 2:
                store->SaveTATrendLineSymbolUpdTime(chartClass, 10, symbol, value);
                seen[{chartClass, symbol, kDate}] = value;
                break;
            case 3:
                store->PackFile();
                committed = seen;
                break;
            case 4:
                store->DiscardPending();
                EXPECT_TRUE(store->ReloadFlagAtOnce());
                EXPECT_TRUE(store->SetTASettingReloadType(false));
                EXPECT_FALSE(store->ReloadFlagAtOnce());
                seen = committed;
                break;
            case 5:
                store = nullptr;  // the end commits
                store = std::make_unique<TestStore>(Path());
                committed = seen;
                break;
            default:
                store->SaveTATrendLine(chartClass, "0a/" + symbol, OneLine(value));
                seen[{chartClass, symbol, kLine}] = value;
        }
        State found;
        std::vector<CString> classes;
        EXPECT_TRUE(store->LoadTATrendLineSettingClass(classes));
        for (const CString& each : classes) {
            std::vector<CString> symbols;
            EXPECT_TRUE(store->LoadTATrendLineSettingSymbols(each, symbols));
            EXPECT_FALSE(symbols.empty());
            for (const CString& key : symbols) {
                TrendLinesByType lines;
                ASSERT_TRUE(store->LoadTATrendLine(each, key, lines));
                found[{each, key.substr(3), kLine}] = lines.front().second.front();
            }
        }
        for (const CString& each : {kClass, kOtherClass}) {
            for (const char* name : {"0", "1", "2", "3"}) {
                CString date;
                if (store->LoadTATrendLineSymbolUpdTime(each, 10, name, date)) {
                    found[{each, name, kDate}] = date;
                }
            }
        }
        ASSERT_EQ(found, seen) << step;
    }
}

}  // namespace ta::test
