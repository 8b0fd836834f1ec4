#include "tests/store/StoreFixture.h"

#include <map>
#include <random>

namespace ta::test {

namespace {

const CString kClass = "MXTechView";
const CString kOtherClass = "MXTechView2";

/// Text with every byte that is special somewhere: halves of double-byte characters, blanks, NUL.
const CString kWildText("\xa5\x5c\xa1\x5d '\"%\\\0\xff\n", 12);

TrendLinesByType OneLine(const CString& data) {
    return {{"0a/2330/0000/0/x", {data}}};
}

/// Saves a different value with each operation and gives them all back as one text.
class Everything {
public:
    static void Save(SqliteStore& store, int seed) {
        const auto number = static_cast<std::uint32_t>(seed) + 0xfffffff0u;
        store.SetTAGroupMaxCount(seed);
        store.SaveTAGroupNameList({"", kWildText, CString(70000, 'n')});
        store.SaveTAGroupStudyList(3, "StudyTypeLogKey01", {seed, -1, INT32_MIN, INT32_MAX});
        store.SaveTAGroupStudyList(3, "StudyTypeLogKey10", {});
        store.SaveTAGroupUniNum(3, -seed);
        store.SaveTAStudyParamSetting(3, {kWildText, ""});
        store.SaveTAStudyShapeSetting(3, {});
        store.SaveTAStudyShowCount(3, seed + 1);
        store.SaveTATechWndShowKey(3, seed + 2);
        store.SaveTASettingScalePos(3, number);
        store.SaveTASettingCursorLineLockMode(3, number + 1);
        store.SaveTASettingCursorMoveStyle(3, number + 2);
        int bits = seed;
        for (const Flag& flag : kFlags) {
            (store.*flag.save)(3, bits % 2 != 0);
            bits /= 2;
        }
        store.SetTAViewGroupSetting(-7, {{"view###1", seed}, {kWildText, -1}});
        store.SaveTATrendLine(kClass, "0a/2330", {{"key", {kWildText, ""}}, {"none", {}}});
        store.SaveTATrendLineSymbolUpdTime(kClass, 0x0a, "2330", "2024-02-29");
    }

    static void Check(SqliteStore& store, int seed) {
        const auto number = static_cast<std::uint32_t>(seed) + 0xfffffff0u;
        Names names;
        Studies first;
        Studies last{1};
        Names params;
        Names shapes{"x"};
        SqliteStore::ViewGroups views;
        TrendLinesByType lines;
        CString date;
        EXPECT_EQ(Number(store, &SqliteStore::GetTAGroupMaxCount), seed);
        EXPECT_TRUE(store.LoadTAGroupNameList(names));
        EXPECT_EQ(names, (Names{"", kWildText, CString(70000, 'n')}));
        EXPECT_TRUE(store.LoadTAGroupStudyList(3, "StudyTypeLogKey01", first));
        EXPECT_EQ(first, (Studies{seed, -1, INT32_MIN, INT32_MAX}));
        EXPECT_TRUE(store.LoadTAGroupStudyList(3, "StudyTypeLogKey10", last));
        EXPECT_TRUE(last.empty());
        EXPECT_EQ(Number(store, &SqliteStore::LoadTAGroupUniNum), -seed);
        EXPECT_TRUE(store.LoadTAStudyParamSetting(3, params));
        EXPECT_EQ(params, (Names{kWildText, ""}));
        EXPECT_TRUE(store.LoadTAStudyShapeSetting(3, shapes));
        EXPECT_TRUE(shapes.empty());
        EXPECT_EQ(Number(store, &SqliteStore::LoadTAStudyShowCount), seed + 1);
        EXPECT_EQ(Number(store, &SqliteStore::LoadTATechWndShowKey), seed + 2);
        EXPECT_EQ(Number(store, &SqliteStore::LoadTASettingScalePos), number);
        EXPECT_EQ(Number(store, &SqliteStore::LoadTASettingCursorLineLockMode), number + 1);
        EXPECT_EQ(Number(store, &SqliteStore::LoadTASettingCursorMoveStyle), number + 2);
        int bits = seed;
        for (const Flag& flag : kFlags) {
            EXPECT_EQ(Number(store, flag.load), bits % 2 != 0);
            bits /= 2;
        }
        EXPECT_TRUE(store.GetTAViewGroupSetting(-7, views));
        EXPECT_EQ(views, (SqliteStore::ViewGroups{{"view###1", seed}, {kWildText, -1}}));
        EXPECT_TRUE(store.LoadTATrendLine(kClass, "0a/2330", lines));
        EXPECT_EQ(lines, (TrendLinesByType{{"key", {kWildText, ""}}, {"none", {}}}));
        EXPECT_TRUE(store.LoadTATrendLineSymbolUpdTime(kClass, 0x0a, "2330", date));
        EXPECT_EQ(date, "2024-02-29");
    }

private:
    using Names = std::vector<CString>;
    using Studies = std::vector<std::int32_t>;
    using S = SqliteStore;

    struct Flag {
        bool (S::*load)(unsigned, bool&);
        bool (S::*save)(unsigned, bool);
    };
    static constexpr Flag kFlags[] = {
        {&S::LoadTASettingChartGrid, &S::SaveTASettingChartGrid},
        {&S::LoadTASettingCursor, &S::SaveTASettingCursor},
        {&S::LoadTASettingCursorOld, &S::SaveTASettingCursorOld},
        {&S::LoadTASettingShowTAInfo, &S::SaveTASettingShowTAInfo},
        {&S::LoadTASettingCrossLine, &S::SaveTASettingCrossLine},
        {&S::LoadTASettingLowIdx, &S::SaveTASettingLowIdx},
        {&S::LoadTASettingHighLow, &S::SaveTASettingHighLow},
        {&S::LoadTASettingCDP, &S::SaveTASettingCDP},
    };

    template <typename Base, typename T>
    static T Number(SqliteStore& store, bool (Base::*load)(unsigned, T&)) {
        T value{};
        EXPECT_TRUE((store.*load)(3, value));
        return value;
    }
    template <typename Base>
    static int Number(SqliteStore& store, bool (Base::*load)(int&)) {
        int value = 0;
        EXPECT_TRUE((store.*load)(value));
        return value;
    }
};

}  // namespace

using StoreValueTest = StoreTest;

TEST_F(StoreValueTest, EveryOperationGivesBackItsValuePendingPackedAndReopened) {
    for (const int seed : {1, 0x55, 0xaa}) {
        {
            TestStore store(Path());
            Everything::Save(store, seed);
            Everything::Check(store, seed);
            store.PackFile();
            Everything::Check(store, seed);
            EXPECT_TRUE(store.errors.empty());
        }
        TestStore store(Path());
        EXPECT_EQ(store.opened.state, OpenResult::Opened);
        Everything::Check(store, seed);
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

TEST_F(StoreValueTest, PackingTheSameValuesAgainDoesNotTouchTheFile) {
    Make(3);
    const QByteArray before = Contents(Path());
    TestStore store(Path());
    SaveGeneration(store, 3);
    store.PackFile();
    store.PackFile();
    EXPECT_EQ(Contents(Path()), before);
    EXPECT_FALSE(store.ReloadFlag());
}

// The store beside a plain model of it, through the same random operations.
TEST_F(StoreValueTest, TrendLinesFollowEveryOrderOfWriting) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const auto pick = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };

    using Key = std::pair<CString, CString>;  // class, symbol
    struct State {
        std::map<Key, CString> lines;
        std::map<Key, CString> dates;
    };
    State seen;
    State committed;
    auto store = std::make_unique<TestStore>(Path());
    for (int step = 0; step < 1500; ++step) {
        const Key key{pick(2) == 0 ? kClass : kOtherClass, std::to_string(pick(4))};
        const CString symbolKey = "0a/" + key.second;
        switch (pick(9)) {
            case 0:
                store->SaveTATrendLine(key.first, symbolKey, {{"type", {}}});
                seen.lines.erase(key);
                seen.dates.erase(key);
                break;
            case 1:
                store->RemoveAllTrendLineData(key.first);
                std::erase_if(seen.lines,
                              [&](auto& line) { return line.first.first == key.first; });
                std::erase_if(seen.dates,
                              [&](auto& date) { return date.first.first == key.first; });
                break;
            case 2:
                store->SaveTATrendLineSymbolUpdTime(key.first, 10, key.second,
                                                    std::to_string(step));
                seen.dates[key] = std::to_string(step);
                break;
            case 3:
                store->PackFile();
                committed = seen;
                break;
            case 4:
                store->DiscardPending();
                EXPECT_TRUE(store->ReloadFlag());
                EXPECT_TRUE(store->SetTASettingReloadType(false));
                EXPECT_FALSE(store->ReloadFlag());
                seen = committed;
                break;
            case 5:
                store = nullptr;  // the end commits
                store = std::make_unique<TestStore>(Path());
                committed = seen;
                break;
            default:
                store->SaveTATrendLine(key.first, symbolKey, OneLine(std::to_string(step)));
                seen.lines[key] = std::to_string(step);
        }
        State found;
        std::vector<CString> classes;
        EXPECT_TRUE(store->LoadTATrendLineSettingClass(classes));
        for (const CString& chartClass : classes) {
            std::vector<CString> symbols;
            EXPECT_TRUE(store->LoadTATrendLineSettingSymbols(chartClass, symbols));
            EXPECT_FALSE(symbols.empty());
            for (const CString& symbol : symbols) {
                TrendLinesByType lines;
                ASSERT_TRUE(store->LoadTATrendLine(chartClass, symbol, lines));
                found.lines[{chartClass, symbol.substr(3)}] = lines.front().second.front();
            }
        }
        for (const CString& chartClass : {kClass, kOtherClass}) {
            for (int symbol = 0; symbol < 4; ++symbol) {
                CString date;
                const CString name = std::to_string(symbol);
                if (store->LoadTATrendLineSymbolUpdTime(chartClass, 10, name, date)) {
                    found.dates[{chartClass, name}] = date;
                }
            }
        }
        ASSERT_EQ(found.lines, seen.lines) << step;
        ASSERT_EQ(found.dates, seen.dates) << step;
    }
}

}  // namespace ta::test
