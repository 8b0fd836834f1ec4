// Comparing symbols: labels, texts, and the list of chosen symbols.

#include "dialogs/ChoiceList.h"
#include "dialogs/ComparisonText.h"
#include "platform/Text.h"
#include "tests/support/MemoryQuotes.h"
#include "tests/support/MemorySets.h"
#include "tests/support/ScarceMemory.h"

#include <gtest/gtest.h>

#include <new>
#include <optional>

namespace ta::test {
namespace {

using namespace ta::compare;
using Codes = std::vector<CString>;

class Comparison : public testing::Test {
protected:
    Comparison() {
        BKQuoteInterface::SetBKInterface(&quotes);
        quotes.markets = {
            {1, "Goods"}, {2, "Bare"}, {3, "Two words"}, {4, "Goods"}, {6, "\xA4\x5D"}};
        for (const std::uint8_t market : {1, 3, 4, 6}) {
            quotes.dailyItems[{market, ""}] = {1};
        }
        quotes.itemData[{1, "OIL"}] = {
            {1018, {"Oil", 0}}, {1019, {"Crude", 0}}, {2020, {"Crude May", 0}}};
    }
    ~Comparison() override { BKQuoteInterface::SetBKInterface(nullptr); }

    MemoryQuotes quotes;
};

TEST_F(Comparison, MarketLabels) {
    const MarketTable table(quotes);
    EXPECT_EQ(table.Label(1), "[Goods]");
    EXPECT_EQ(table.Label(2), "") << "a market without daily history";
    EXPECT_EQ(table.Label(3), "[Two words]");
    EXPECT_EQ(table.Label(9), "");
    for (const auto& [label, id] : std::vector<std::pair<CString, int>>{
             {"[Goods]", 1},
             {"Goods]", 0},
             {"[Bare]", 0},
             {"[Two words", 3},
             {"", 0},
             {"[\xA4\x5D", 6}}) {  // its last byte is a "]", its last character is not
        EXPECT_EQ(table.Id(label.c_str()), id) << label;
    }
    EXPECT_EQ(table.Id(nullptr), 0);
    const ScarceMemory none(0);
    EXPECT_EQ(table.Id("[A label that needs more than a few bytes"), 0);
}

TEST_F(Comparison, TextsOfChosenSymbols) {
    const MarketTable table(quotes);
    CString symbol = "old";
    CString name = "old";
    EXPECT_FALSE(SymbolFields(quotes, 1, "GAS", symbol, name));
    EXPECT_EQ(symbol + name, "oldold");
    // The item of the name is settled by the first call in the process.
    EXPECT_EQ(ChosenText(quotes, table, 1, "OIL"), "[Goods]Oil Crude");
    quotes.nameShowsRealMonth = true;
    EXPECT_EQ(ChosenText(quotes, table, 1, "OIL"), "[Goods]Oil Crude");
    EXPECT_EQ(ChosenText(quotes, table, 1, "GAS"), "[Goods]GAS ???");
    EXPECT_EQ(ChosenText(quotes, table, 2, "X"), "X ???");
}

TEST_F(Comparison, SplittingTexts) {
    EXPECT_EQ(IdOfLeafText("9901 Big Name"), "9901");
    EXPECT_EQ(IdOfLeafText(" x"), "");
    EXPECT_EQ(IdOfLeafText("alone"), "alone");
    EXPECT_EQ(IdOfLeafText(std::string(200, 'i') + " x").size(), 127U);
    EXPECT_EQ(IdOfLeafText(std::string(126, 'i') + "\xA5\x5C x").size(), 126U);
    EXPECT_EQ(LabelOfChosenText("[Goods]OIL Crude]"), "[Goods");
    EXPECT_EQ(LabelOfChosenText("[Two words]OIL x"), "[Two");
    EXPECT_EQ(LabelOfChosenText("X"), "X");
    EXPECT_EQ(LabelOfChosenText("[\xA4\x5D]X name"), "[\xA4\x5D") << "half a character";
}

TEST_F(Comparison, DescriptionOfTheDataSetting) {
    for (const auto& [key, text] : {std::pair{"DATATYPE", "T:"},
                                    {"DATATYPE_DAILY", "daily"},
                                    {"DATATYPE_WEEKLY", "weekly"},
                                    {"DATATYPE_MONTLY", "monthly"},
                                    {"DATATYPE_MIN", "min %s"},
                                    {"READLAST", ", last "},
                                    {"REC_NUMBER", " bars"},
                                    {"REC_START_DATE", ", from "}}) {
        quotes.language[CString("IDC_CHANGESYM-CHANGESYM_") + key] = text;
    }
    for (const auto& [values, text] : std::vector<std::pair<history::Values, CString>>{
             {{0, 5, 0, 60, 1}, "T:daily, last 60 bars"},
             {{1, 5, 1, 60, 31}, "T:weekly, from 1970/2/1"},
             {{2, 5, -1, 60, 18353}, "T:monthly, from 2020/4/1"},
             {{3, 15, 0, 1440, 1}, "T:15min %s, last 1440 bars"},
             {{4, 15, 0, 50, 1}, "T:, last 50 bars"},
             {{-1, 15, 2, 50, 1}, "T:, from 1970/1/2"}}) {
        EXPECT_EQ(DataDescription(values), text);
    }
}

class ChosenSymbols : public testing::Test {
protected:
    static ChoiceList::TextOf TextOf() {
        return [](const ComparedSymbol& symbol) { return symbol.code.substr(0, 1); };
    }
    static std::string Joined(const ChoiceList& list) {
        std::string codes;
        for (std::size_t i = 0; i < list.Symbols().size(); ++i) {
            codes += list.Symbols()[i].code + " ";
            EXPECT_EQ(list.Texts()[i], TextOf()(list.Symbols()[i]));
        }
        EXPECT_EQ(list.Texts().size(), list.Symbols().size());
        return codes;
    }
};

TEST_F(ChosenSymbols, LimitAndEqualTexts) {
    using Added = ChoiceList::Added;
    ChoiceList list({{1, "a1"}, {1, "a1"}}, 4, TextOf());
    EXPECT_EQ(list.Add({2, "a2"}), Added::Twice) << "equal texts are one symbol to the user";
    EXPECT_EQ(list.Add({1, "b1"}), Added::Yes);
    EXPECT_FALSE(list.IsFull());
    EXPECT_EQ(list.Add({1, "c1"}), Added::Yes);
    EXPECT_TRUE(list.IsFull());
    EXPECT_EQ(list.Add({1, "a1"}), Added::Full) << "the limit comes before the look at the texts";
    EXPECT_EQ(Joined(list), "a1 a1 b1 c1 ");
    EXPECT_FALSE(list.IsOverLimit());
    for (const int limit : {0, -1}) {
        ChoiceList none({}, limit, TextOf());
        EXPECT_EQ(none.Add({1, "a"}), Added::Full);
        EXPECT_EQ(none.IsOverLimit(), limit < 0);
    }
}

TEST_F(ChosenSymbols, RemovingAndMoving) {
    ChoiceList list({{1, "a1"}, {2, "a2"}, {1, "a1"}, {1, "b"}, {1, "c"}}, 3, TextOf());
    EXPECT_TRUE(list.IsOverLimit());
    EXPECT_EQ(list.Remove(1), 1) << "the row's own entry, not the first with its text";
    EXPECT_EQ(Joined(list), "a1 a1 b c ");
    EXPECT_EQ(list.Remove(3), 2);
    for (const auto& [from, to, moved, codes] :
         std::vector<std::tuple<int, int, bool, const char*>>{{2, 0, true, "b a1 a1 "},
                                                              {0, 1, true, "a1 b a1 "},
                                                              {0, 2, true, "b a1 a1 "},
                                                              {0, 3, false, "b a1 a1 "},
                                                              {-1, 0, false, "b a1 a1 "},
                                                              {1, 1, false, "b a1 a1 "},
                                                              {0, -1, false, "b a1 a1 "}}) {
        EXPECT_EQ(list.Move(from, to), moved);
        EXPECT_EQ(Joined(list), codes);
    }
    EXPECT_EQ(list.Remove(3), -1);
    EXPECT_EQ(list.Remove(0) + list.Remove(0), 0);
    EXPECT_EQ(list.Remove(0), -1) << "the last one";
    EXPECT_EQ(Joined(list), "");
}

TEST_F(ChosenSymbols, AFailureLeavesEverySymbolItsText) {
    std::optional<ScarceMemory> scarce;
    bool fails = false;
    ChoiceList list({}, 9, [&](const ComparedSymbol& symbol) {
        CString text(1000, symbol.code[0]);
        if (fails && symbol.code != "a") {
            scarce.emplace(100);
        }
        return text;
    });
    list.SetSymbols({{1, "a"}});
    fails = true;
    const auto isWhole = [&](const auto& action) {
        try {
            action();
        } catch (const std::bad_alloc&) {
        }
        scarce.reset();
        return list.Texts().size() == list.Symbols().size();
    };
    EXPECT_TRUE(isWhole([&] { list.Add({1, "b"}); }));
    const std::vector<ComparedSymbol> three{{1, "a"}, {1, "b"}, {1, "c"}};
    EXPECT_TRUE(isWhole([&] { list.SetSymbols(three); }));
    EXPECT_TRUE(isWhole([&] { list.WriteTexts(); }));
}

TEST(PastedCodes, AreParted) {
    EXPECT_EQ(CodesOfText(" 9901, 9902;9901\r\n\tSPX "), (Codes{"9901", "9902", "SPX"}));
    EXPECT_EQ(CodesOfText(" ,;\n"), Codes{});
    EXPECT_EQ(CodesOfText("\xA4\x5D,a"), (Codes{"\xA4\x5D", "a"}));
}

TEST(RecentSymbolsTest, TheTenNewestFirst) {
    MemorySets kept;
    for (int i = 0; i < 12; ++i) {
        RememberSymbol(&kept, {1, std::to_string(i)});
    }
    RememberSymbol(&kept, {1, "7"});
    std::string codes;
    for (const ComparedSymbol& symbol : RecentSymbols(&kept)) {
        codes += symbol.code + " ";
    }
    EXPECT_EQ(codes, "7 11 10 9 8 6 5 4 3 2 ");
    RememberSymbol(nullptr, {2, "x"});
    EXPECT_EQ(RecentSymbols(nullptr).front().code, "x") << "kept for this run";
    EXPECT_EQ(RecentSymbols(&kept).front().code, "7");
}

}  // namespace
}  // namespace ta::test
