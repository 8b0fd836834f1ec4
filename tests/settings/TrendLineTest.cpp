// Trend-line keys, data strings, the table of lines and their dates.

#include "platform/Text.h"
#include "settings/TrendLineKeys.h"
#include "tests/support/TestAccess.h"

#include <gtest/gtest.h>

#include <tuple>

namespace ta::test {
namespace {

class TrendLineTest : public SettingsFixture {
protected:
    int Add(const CString& symbolKey, const CString& data, int period = 0, int count = 0,
            const CString& chartClass = kTechViewClass) {
        return Repository().AddTrendLineData(chartClass, symbolKey, "x", period, data, count);
    }
    Names Drawn(const CString& symbolKey, int period = 0, int count = 0) {
        Names lines;
        Repository().GetTrendLineData(lines, kTechViewClass, symbolKey, "x", period, count);
        return lines;
    }
};

TEST_F(TrendLineTest, Keys) {
    using namespace settings;
    EXPECT_EQ(PackSymbolKey(10, "2330"), "0a/2330");
    EXPECT_EQ(PackTrendLineSymbolKey("MXTechView", "0a/2330"), "MXTechView-0a/2330");
    // The count is written for minutes and seconds alone.
    const std::vector<std::pair<int, std::string>> keys{
        {-1, "0a/2330/-001/0/x"}, {0, "0a/2330/0000/0/x"}, {1, "0a/2330/0001/0/x"},
        {2, "0a/2330/0002/0/x"},  {3, "0a/2330/0003/5/x"}, {4, "0a/2330/0004/5/x"},
        {5, "0a/2330/0005/0/x"}};
    for (const auto& [period, key] : keys) {
        EXPECT_EQ(PackTrendLineTypeKey("0a/2330", "x", period, 5), key);
    }
}

TEST_F(TrendLineTest, KeyDecoders) {
    CTaSettingHandle& repository = Repository();
    using Texts = std::pair<CString, CString>;
    const Texts kept{"kept", "kept"};
    for (const auto& [key, decoded] : std::vector<std::pair<CString, Texts>>{
             {"", kept}, {"MXTechView", kept}, {"V-0a/TX-W1", {"V", "0a/TX-W1"}}}) {
        Texts out = kept;
        const int result = repository.DecodeTrendLineClassSymbolKey(key, out.first, out.second);
        EXPECT_EQ(result, decoded == kept ? 0 : 1) << key;
        EXPECT_EQ(out, decoded) << key;
    }
    using Symbol = std::pair<unsigned char, CString>;
    const Symbol none{77, "kept"};
    for (const auto& [key, decoded] : std::vector<std::pair<CString, Symbol>>{
             {"", none}, {"0a2330", none}, {"0a/2330/W", {10, "2330/W"}}, {"FF/", {255, ""}}}) {
        Symbol out = none;
        const int result = repository.DecodeTrendLineServiceSymbolKey(key, out.first, out.second);
        EXPECT_EQ(result, decoded == none ? 0 : 1) << key;
        EXPECT_EQ(out, decoded) << key;
    }
    using Type = std::tuple<CString, CString, int, int>;
    const Type nothing{"kept", "kept", 77, 77};
    for (const auto& [key, decoded] : std::vector<std::pair<CString, Type>>{
             {"", nothing},
             {"0a/2330/0003/5", nothing},
             {"0a/2330/0003/15/a/b", {"0a/2330", "a/b", 3, 15}},
             {"///99999999999999999999/", {"/", "", 0, 2147483647}}}) {
        auto [symbolKey, name, period, count] = nothing;
        const int result = repository.DecodeTrendLineTypeKey(key, symbolKey, name, period, count);
        EXPECT_EQ(result, decoded == nothing ? 0 : 1) << key;
        EXPECT_EQ(Type(symbolKey, name, period, count), decoded) << key;
    }
    // An output may be the key itself.
    CString chartClass;
    CString inPlace = "V-0a/2330";
    EXPECT_EQ(repository.DecodeTrendLineClassSymbolKey(inPlace, chartClass, inPlace), 1);
    EXPECT_EQ(inPlace, "0a/2330");
}

TEST_F(TrendLineTest, DataStrings) {
    struct Case {
        const char* data;
        int result;
        int kind;
        bool flag;
        bool named = true;
    };
    for (const Case& c :
         {Case{"2002/a/b/c/10/rest", 1, 2002, true}, Case{"2002/a/b/c//", 1, 2002, false},
          Case{"2002////1/", 1, 2002, true}, Case{"2002/a/b/c/1", 0, 2002, true},
          Case{"2002/a/b", 0, 2002, true}, Case{"x/a/b/c/0/", 1, 0, false},
          Case{" 2021abc/a/b/c/01/", 1, 2021, false}, Case{"", 0, -1, true, false},
          Case{"2002", 0, -1, true, false}}) {
        // What is not reached stays as it is.
        int kind = -1;
        CString name = "unset";
        bool flag = c.result == 1 ? !c.flag : c.flag;
        EXPECT_EQ(Repository().DecodeTrendLineData(c.data, kind, name, flag), c.result) << c.data;
        EXPECT_EQ(kind, c.kind) << c.data;
        EXPECT_EQ(name != "unset", c.named) << c.data;
        EXPECT_EQ(flag, c.flag) << c.data;
    }
}

TEST_F(TrendLineTest, KindsHaveTheirNames) {
    const CString prefix = "IDC_TECHVIEW-TRENDLINE_TRENDNAME_";
    const std::vector<std::pair<int, CString>> names{
        {2002, "HORIZONTAL"},      {2004, "LINE"},         {2005, "RAILLINE"},
        {2006, "PARALLEL"},        {2007, "STOCKBOX"},     {2008, "GOLDENWAVE"},
        {2009, "GOLDEN_CUT"},      {2010, "GOLDENCUT_UP"}, {2011, "GOLDENCUT_DOWN"},
        {2012, "GOLDENYIELDTIME"}, {2013, "OPP_DOWNGUMP"}, {2014, "OPP_UPGUMP"},
        {2015, "ABS_DOWNGUMP"},    {2016, "ABS_UPGUMP"},   {2017, "PHASE"},
        {2018, "ORDINALTIME"},     {2019, "EVENTIME"},     {2020, "GOLDENRULER"},
        {2021, "LINESEGMENT"}};
    for (const auto& [kind, key] : names) {
        EXPECT_EQ(settings::GetTrendLineName(kind), prefix + key);
    }
    for (const int nameless : {2001, 2003, 2022, 0, -1}) {
        EXPECT_EQ(settings::GetTrendLineName(nameless), "");
    }
}

TEST_F(TrendLineTest, AddingKeepsOrderAndSkipsDuplicates) {
    EXPECT_EQ(Add("", "l"), 0);
    EXPECT_EQ(Add("0a/2330", ""), 0);
    EXPECT_EQ(Add("0a/2330", "l", 0, 0, ""), 0);
    EXPECT_EQ(Repository().AddTrendLineData("V", "0a/2330", "", 0, "l", 0), 0);
    // Past the size at which lines are looked up by an index.
    Names expected;
    for (int i = 0; i < 200; ++i) {
        expected.push_back("line" + std::to_string(i * 7 % 200));
        EXPECT_EQ(Add("0a/2330", expected.back()), 1);
        EXPECT_EQ(Add("0a/2330", expected[expected.size() / 2]), 1);
    }
    EXPECT_EQ(Drawn("0a/2330"), expected);
    EXPECT_TRUE(memory.trendLines.empty()) << "adding does not write";
}

TEST_F(TrendLineTest, WhatTheStoreHoldsTwiceStaysAndIsNotAddedAThirdTime) {
    for (const int count : {3, 31, 32, 100}) {
        Names lines(2, "twice");
        while (static_cast<int>(lines.size()) < count) {
            lines.push_back(std::to_string(lines.size() / 2));  // each twice
        }
        memory.trendLines[kTechViewClass]["0a/2330"] = {{"0a/2330/0000/0/x", lines}};
        EndRepository();
        for (const CString& line : Names(lines)) {
            Add("0a/2330", line);
        }
        Add("0a/2330", "new");
        Add("0a/2330", "new");
        lines.emplace_back("new");
        EXPECT_EQ(Drawn("0a/2330"), lines);
    }
}

TEST_F(TrendLineTest, PeriodsAndCountsAreApart) {
    Add("0a/2330", "daily", 0, 5);
    Add("0a/2330", "five", 3, 5);
    Add("0a/2330", "fifteen", 3, 15);
    EXPECT_EQ(Drawn("0a/2330", 0, 99), Names{"daily"});
    EXPECT_EQ(Drawn("0a/2330", 3, 5), Names{"five"});
    EXPECT_EQ(Repository().GetTrendLineCount(kTechViewClass, "0a/2330"), 3u);
    TrendLineList all;
    EXPECT_EQ(Repository().GetAllTrendLineData("MXTechView-0a/2330", all), 1);
    EXPECT_EQ(all, (TrendLineList{{"0a/2330/0000/0/x", {"daily"}},
                                  {"0a/2330/0003/15/x", {"fifteen"}},
                                  {"0a/2330/0003/5/x", {"five"}}}));
    EXPECT_EQ(Repository().GetAllTrendLineData("MXTechView-0a/2317", all), 0);
    EXPECT_TRUE(all.empty());
}

TEST_F(TrendLineTest, AClassIsFoundAnywhereInTheKey) {
    CTaSettingHandle& repository = Repository();
    Add("0a/2330", "a");
    Add("0a/2330", "b", 0, 0, "MXTechView2");
    Add("0a/MXTechView", "c", 0, 0, "Other");
    EXPECT_EQ(repository.GetTrendLineCount("MXTechView"), 3u);
    EXPECT_EQ(repository.GetTrendLineSymbolCount("MXTechView"), 3u);
    EXPECT_EQ(repository.GetTrendLineCount("MXTechView2"), 1u);
    EXPECT_EQ(repository.GetTrendLineCount("MXTechView", "0a/2330"), 1u);
    for (const CString empty : {"", ""}) {
        EXPECT_EQ(repository.GetTrendLineCount(empty), 0u);
        EXPECT_EQ(repository.GetTrendLineSymbolCount(empty), 0u);
        EXPECT_EQ(repository.GetTrendLineCount(empty, "0a/2330"), 0u);
        EXPECT_EQ(repository.GetTrendLineCount("MXTechView", empty), 0u);
        repository.ReleaseTrendLine(empty);
        repository.ClearAllTrendLine(empty);
    }
    repository.SaveTrendLineData();
    repository.ReleaseTrendLine("MXTechView2");
    EXPECT_EQ(repository.GetTrendLineCount("MXTechView"), 2u);
    EXPECT_EQ(memory.trendLines.size(), 3u) << "releasing leaves the store alone";
    repository.ClearAllTrendLine("MXTechView");
    EXPECT_EQ(repository.GetTrendLineCount("MXTechView"), 0u);
    EXPECT_FALSE(memory.trendLines.contains("MXTechView"));
    EXPECT_TRUE(memory.trendLines.contains("MXTechView2")) << "the store removes the class itself";
}

TEST_F(TrendLineTest, TheLastLineOfASymbolLeavesTheStoreToo) {
    memory.trendLines["MXTechView"]["0a/2330"] = {{"0a/2330/0000/0/x", {"l"}}};
    memory.trendLineDates[{"MXTechView", 10, "2330"}] = "2026-01-02";
    CTaSettingHandle& repository = Repository();
    EXPECT_EQ(repository.GetTrendLineSymbolUpdTime(kTechViewClass, 10, "2330"), "2026-01-02");
    EXPECT_EQ(repository.SetTrendLineData(kTechViewClass, "0a/2330", "x", 0, {}, 0), 1);
    EXPECT_EQ(repository.SetTrendLineData(kTechViewClass, "0a/9999", "x", 0, {}, 0), 1);
    EXPECT_EQ(repository.GetTrendLineSymbolCount(kTechViewClass), 0u);
    EXPECT_EQ(repository.GetTrendLineSymbolUpdTime(kTechViewClass, 10, "2330"), "");
    store.TakeLines();
    repository.SaveTrendLineData();
    repository.SaveTrendLineData();
    EXPECT_EQ(store.TakeLines(), Lines{"SaveTATrendLine(MXTechView, 0a/2330, [])"});
    // A line drawn again before the save is stored, not removed.
    repository.SetTrendLineData(kTechViewClass, "0a/2330", "x", 0, {"m"}, 0);
    repository.SetTrendLineData(kTechViewClass, "0a/2330", "x", 0, {}, 0);
    repository.SetTrendLineData(kTechViewClass, "0a/2330", "x", 0, {"n"}, 0);
    EXPECT_EQ(repository.GetTrendLineSymbolUpdTime(kTechViewClass, 10, "2330"), "") << "gone too";
    store.TakeLines();
    repository.SaveTrendLineData();
    EXPECT_EQ(store.TakeLines(),
              Lines{"SaveTATrendLine(MXTechView, 0a/2330, [0a/2330/0000/0/x=[n]])"});
}

TEST_F(TrendLineTest, LinesOfAnotherClassThatAReloadBringsBackAreNotRemoved) {
    memory.trendLines["Other"]["0a/2330"] = {{"0a/2330/0000/0/x", {"l"}}};
    CTaSettingHandle& repository = Repository();
    repository.SetTrendLineData("Other", "0a/2330", "x", 0, {}, 0);
    repository.SetTrendLineData("Other", "0a/2330", "y", 0, {"unsaved"}, 0);
    memory.reloadFlag = true;
    EXPECT_EQ(repository.GetTrendLineCount("Other"), 1u);
    store.TakeLines();
    repository.SaveTrendLineData();
    EXPECT_EQ(store.TakeLines(), Lines{"SaveTATrendLine(Other, 0a/2330, [0a/2330/0000/0/x=[l]])"});
}

TEST_F(TrendLineTest, TheDateOfChangeIsTheLocalDay) {
    Add("0a/2330", "l");
    CTaSettingHandle& repository = Repository();
    clock.now = 1'767'196'800;  // midnight of 2026-01-01 in Taipei
    store.TakeLines();
    repository.UpdateTrendLineSymbolTime(kTechViewClass, 10, "2330");
    repository.UpdateTrendLineSymbolTime(kTechViewClass, 10, "2317");
    Lines lines = store.TakeLines();
    std::erase(lines, "GetTASettingReloadType()");
    EXPECT_EQ(lines, Lines{"SaveTATrendLineSymbolUpdTime(MXTechView, 10, 2330, 2026-01-01)"});
    EXPECT_EQ(repository.GetTrendLineSymbolUpdTime(kTechViewClass, 10, "2330"), "2026-01-01");
    EXPECT_EQ(repository.GetTrendLineSymbolUpdTime(kTechViewClass, 10, "2317"), "");
    // Lines that are dropped take their date along, others keep theirs.
    Add("0a/2330", "l", 0, 0, "Other");
    repository.UpdateTrendLineSymbolTime("Other", 10, "2330");
    repository.ReleaseTrendLine("MXTech");
    Add("0a/2330", "l");
    EXPECT_EQ(repository.GetTrendLineSymbolUpdTime(kTechViewClass, 10, "2330"), "");
    EXPECT_EQ(repository.GetTrendLineSymbolUpdTime("Other", 10, "2330"), "2026-01-01");
}

TEST_F(TrendLineTest, AClassKeepsTheDashInItsName) {
    const MemoryConfigStore before = [] {
        MemoryConfigStore made;
        made.trendLines["Tech-View"] = {{"0a/2330", {{"0a/2330/0000/0/x", {"l"}}}},
                                        {"0a/TX-W1", {{"0a/TX-W1/0000/0/x", {"m"}}}}};
        made.trendLineDates = {{{"Tech-View", 10, "2330"}, "2026-01-02"}};
        return made;
    }();
    memory = before;
    CTaSettingHandle& repository = Repository();
    EXPECT_EQ(repository.GetTrendLineSymbolUpdTime("Tech-View", 10, "2330"), "2026-01-02");
    EXPECT_EQ(repository.GetTrendLineCount("Tech-View", "0a/TX-W1"), 1u);
    repository.SaveTrendLineData();
    EXPECT_EQ(memory.trendLines, before.trendLines);
    repository.SetTrendLineData("Tech-View", "0a/2330", "x", 0, {}, 0);
    Add("0b/1", "n", 0, 0, "Another-");
    repository.SaveTrendLineData();
    EXPECT_EQ(memory.trendLines["Tech-View"].size(), 1u);
    EXPECT_TRUE(memory.trendLines["Another-"].contains("0b/1"));
    EXPECT_EQ(memory.trendLines.size(), 2u);
}

TEST_F(TrendLineTest, LinesAreLoadedAtStartAndAfterAReload) {
    const CString name = text::FromUtf8("台積電/功");
    memory.trendLines["MXTechView"]["0a/2330"] = {{"0a/2330/0000/0/" + name, {"l", "l", "m"}}};
    memory.trendLines["Other"]["0b/X"] = {{"0b/X/0000/0/x", {"o"}}};
    CTaSettingHandle& repository = Repository();
    Names lines;
    EXPECT_EQ(repository.GetTrendLineData(lines, kTechViewClass, "0a/2330", name, 0, 0), 1);
    EXPECT_EQ(lines, (Names{"l", "l", "m"})) << "as stored, duplicates included";
    memory.trendLines["MXTechView"] = {{"0a/2317", {{"0a/2317/0000/0/x", {"n"}}}}};
    Add("0a/1101", "unsaved");
    memory.reloadFlag = true;
    EXPECT_EQ(repository.GetTrendLineCount(kTechViewClass), 1u);
    EXPECT_EQ(repository.GetTrendLineCount("Other"), 1u);
    EXPECT_EQ(Drawn("0a/2317"), Names{"n"});
}

TEST_F(TrendLineTest, LimitsComeFromTheEntitlementService) {
    memoryEntitlement.maxLinesInAll = 100;
    memoryEntitlement.maxLinesPerSymbol = 5;
    int inAll = 0;
    int perSymbol = 0;
    Repository().GetTATrendLineMaxCount(inAll, perSymbol);
    EXPECT_EQ(inAll, 100);
    EXPECT_EQ(perSymbol, 5);
    // A service that is gone leaves what it said at the load; without any there is no limit.
    services.entitlement = nullptr;
    HangIn();
    Repository().GetTATrendLineMaxCount(inAll, perSymbol);
    EXPECT_EQ(inAll, 100);
    EndRepository();
    Repository().GetTATrendLineMaxCount(inAll, perSymbol);
    EXPECT_EQ(inAll, -1);
    EXPECT_EQ(perSymbol, -1);
}

}  // namespace
}  // namespace ta::test
