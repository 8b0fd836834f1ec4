// The tree of all symbols: what is in it, in which order, and how it is searched.

#include "dialogs/SymbolTree.h"
#include "platform/Text.h"
#include "tests/support/MemoryQuotes.h"

#include <gtest/gtest.h>

#include <array>

namespace ta::test {
namespace {

using compare::SymbolTree;
constexpr int kNone = SymbolTree::kNone;

const CString& Big5(const char* utf8) {
    static std::map<std::string, CString> known;
    return known.emplace(utf8, text::FromUtf8(utf8)).first->second;
}

class SymbolTrees : public testing::Test {
protected:
    SymbolTrees() { BKQuoteInterface::SetBKInterface(&quotes); }
    ~SymbolTrees() override { BKQuoteInterface::SetBKInterface(nullptr); }

    void AddMarket(std::uint8_t id, const CString& name) {
        quotes.markets.emplace_back(id, name);
        quotes.dailyItems[{id, ""}] = {1};
    }
    /// The tree in one line, "market(commodity(leaf=data,...),...)", as a view would walk it.
    static std::string Shape(const SymbolTree& tree, int parent = kNone) {
        std::string shape;
        for (int row = 0; row < tree.ChildCount(parent); ++row) {
            const int node = tree.Child(parent, row);
            EXPECT_EQ(tree.Parent(node), parent);
            EXPECT_EQ(tree.Row(node), row);
            shape += (row == 0 ? "" : ",") + std::string(tree.Text(node));
            if (tree.IsLeaf(node)) {
                shape += "=" + std::to_string(tree.ItemData(node));
                EXPECT_EQ(tree.ChildCount(node), 0);
            } else {
                EXPECT_EQ(tree.ItemData(node), parent == kNone ? -1 : -2);
                shape += "(" + Shape(tree, node) + ")";
            }
        }
        return shape;
    }
    static std::string TextOf(const SymbolTree& tree, int node) {
        return node == kNone ? "none" : std::string(tree.Text(node));
    }

    MemoryQuotes quotes;
};

TEST_F(SymbolTrees, OrderOfMarketsAndSymbols) {
    EXPECT_EQ(Shape(SymbolTree()), "");
    EXPECT_EQ(Shape(SymbolTree(quotes)), "") << "an empty back-end";
    AddMarket(2, "Two");
    AddMarket('m', "Futures");
    AddMarket('O', "Hidden");
    AddMarket(1, "Goods");
    AddMarket(16, "Shares");
    AddMarket(3, "Bare");
    quotes.dailyItems.erase({3, ""});
    quotes.symbols[{3, ""}] = {{"x"}, {"never seen"}};
    quotes.symbols[{'O', ""}] = {{"y"}, {"never seen"}};
    quotes.symbols[{16, ""}] = {{"9902", "9901"}, {"B", "A"}};
    quotes.symbols[{2, ""}] = {{"SPX", "IBM"}, {"Index"}};  // one name is missing
    quotes.commodities[2] = {{"no"}, {"not listed by commodity"}};
    quotes.commodities[1] = {{"OIL", "", "GLD"}, {"Oil", "Others", "Gold"}};
    quotes.symbols[{1, "OIL"}] = {{"OIL1"}, {"Oil 1"}};
    quotes.symbols[{1, ""}] = {{"ODD"}, {"Odd"}};
    quotes.contractMonths[{1, "OIL"}] = {"202005"};
    quotes.weeklyContracts[{1, "OIL", "202005"}] = "W";
    quotes.monthSymbols[{1, "202005"}] = {{"OILW"}, {"not in this market"}};
    EXPECT_EQ(Shape(SymbolTree(quotes)),
              "Futures(),Shares(9902 B=16,9901 A=16),Two(SPX Index=2,IBM =2),"
              "Goods(OIL Oil(OIL1 Oil 1=1),ODD Odd=1,GLD Gold()),Bare()");
}

TEST_F(SymbolTrees, WeeklyContracts) {
    AddMarket('m', "F");
    quotes.commodities['m'] = {{"SXO", "ETXO", ""}, {"S", "E", ""}};
    for (const CString commodity : {"SXO", "ETXO", ""}) {
        quotes.symbols[{'m', commodity}] = {{commodity + "0"}, {"own"}};
        quotes.contractMonths[{'m', commodity}] = {"06", "1W", "2W"};
        quotes.weeklyContracts[{'m', commodity, "1W"}] = "w1";
        quotes.weeklyContracts[{'m', commodity, "2W"}] = "w2";
    }
    quotes.monthSymbols[{'m', "06"}] = {{"M"}, {"an ordinary month"}};
    quotes.monthSymbols[{'m', "1W"}] = {{"W1", "W2"}, {"a", "b"}};
    quotes.monthSymbols[{'m', "2W"}] = {{"W3"}, {"c"}};
    EXPECT_EQ(Shape(SymbolTree(quotes)),
              "F(SXO S(SXO0 own=109,W1 a=109,W2 b=109,W3 c=109),"
              "ETXO E(ETXO0 own=109,W1 a=109,W2 b=109),"
              "0 own=109,W1 a=109,W2 b=109,W3 c=109)");
}

// Each back-end call that fails leaves out what it would have given, and nothing else.
TEST_F(SymbolTrees, FailedCalls) {
    AddMarket('m', "F");
    AddMarket(16, "S");
    quotes.commodities['m'] = {{"C"}, {"c"}};
    quotes.symbols[{'m', "C"}] = {{"C1"}, {"1"}};
    quotes.symbols[{16, ""}] = {{"9901"}, {"A"}};
    quotes.contractMonths[{'m', "C"}] = {"1W"};
    quotes.weeklyContracts[{'m', "C", "1W"}] = "w";
    quotes.monthSymbols[{'m', "1W"}] = {{"W1"}, {"w"}};
    const std::string shares = ",S(9901 A=16)";
    for (const auto& [call, shape] : std::vector<std::pair<const char*, std::string>>{
             {"bGetQuoteServiceID", ""},
             {"bGetTADailyItemNoByService", "F()" + shares},
             {"bGetAllCommodityID", "F()" + shares},
             {"bGetSymbolItemID", "F(C c(W1 w=109))" + shares},
             {"bGetContractMonthByCommodity", "F(C c(C1 1=109))" + shares},
             {"GetWeeklyContractIDByContractMonth", "F(C c(C1 1=109))" + shares},
             {"bGetSymbolID", "F(C c(C1 1=109))" + shares},
             {"nothing", "F(C c(C1 1=109,W1 w=109))" + shares}}) {
        FailingQuotes failing(quotes);
        failing.FailOnCall(call, 1);
        EXPECT_EQ(Shape(SymbolTree(failing)), shape) << call;
    }
}

class SymbolSearch : public SymbolTrees {
protected:
    SymbolSearch() {
        AddMarket('m', "Futures");
        AddMarket(16, "9 Shares");
        quotes.commodities['m'] = {{"AB"}, {"commodity"}};
        quotes.symbols[{'m', "AB"}] = {{"ABX1", "abx2"}, {"one", "two"}};
        // In the code page 功 is A5 5C and ふ C6 B1; 一 is A4 40, 丁 A4 42 ("B"), 七 A4 43 ("C").
        quotes.symbols[{16, ""}] = {{"ABX1", "9901", "9902", Big5("丁"), "z"},
                                    {"again", Big5("許功蓋"), Big5("七"), "b", "last"}};
        quotes.otherNames[{16, "9902"}] = "Seventh\nAlpha";
        quotes.otherNames[{16, "z"}] = Big5("末");
        tree = SymbolTree(quotes);
    }
    SymbolTree tree;
};

TEST_F(SymbolSearch, TheFirstLeafThatBeginsWithTheText) {
    for (const auto& [typed, text] : std::vector<std::pair<CString, CString>>{
             {"", "none"},
             {"a", "ABX1 one"},
             {"ABX2", "abx2 two"},
             {"abx1 A", "ABX1 again"},
             {"9", "9901 " + Big5("許功蓋")},  // not the market of that name
             {"9902", "9902 " + Big5("七")},
             {"COMM", "none"},
             {Big5("丁"), Big5("丁") + " b"},
             {Big5("丁") + " B", Big5("丁") + " b"},
             {"B", "none"},
             {"z last of all, and longer than any", "none"}}) {
        EXPECT_EQ(TextOf(tree, tree.FindBeginning(typed)), text) << text::ToUtf8(typed);
    }
    // 七 and 乞 are different characters with trails that differ as "C" and "c".
    const CString lower = "9902 \xA4\x63";
    EXPECT_EQ(tree.FindBeginning(lower), kNone);
    EXPECT_EQ(SymbolTree().FindBeginning("a"), kNone);
}

TEST_F(SymbolSearch, NextAndPreviousThatHoldTheText) {
    const auto walk = [this](const CString& typed, int step) {
        std::string found;
        int node = kNone;
        for (int i = 0; i < 4; ++i) {
            node = tree.FindHolding(typed, node, step);
            found += (i == 0 ? "" : "|") + TextOf(tree, node);
        }
        return found;
    };
    const std::string seven = "9902 " + Big5("七");
    EXPECT_EQ(walk("bx1", 1), "ABX1 one|ABX1 again|ABX1 one|ABX1 again");
    EXPECT_EQ(walk("bx1", -1), "ABX1 again|ABX1 one|ABX1 again|ABX1 one");
    EXPECT_EQ(walk("bx", 1), "ABX1 one|abx2 two|ABX1 again|ABX1 one");
    const auto first = [&](const CString& typed) {
        return TextOf(tree, tree.FindHolding(typed, kNone, 1));
    };
    EXPECT_EQ(first("alpha"), seven) << "the name in the other language";
    EXPECT_EQ(first(Big5("末")), "z last");
    EXPECT_EQ(first(Big5("蓋")), "9901 " + Big5("許功蓋"));
    EXPECT_EQ(first("\\"), "none") << "half a character";
    EXPECT_EQ(first("c"), "none") << "half a character, or a commodity";
    EXPECT_EQ(first(""), "none");
    EXPECT_EQ(TextOf(tree, tree.FindHolding("one", tree.FindBeginning("ABX1"), 1)), "ABX1 one")
        << "the only one, all the way around";
    EXPECT_EQ(SymbolTree().FindHolding("a", kNone, -1), kNone);
}

TEST_F(SymbolSearch, Codes) {
    std::string found;
    for (const int node : tree.FindCodes({"9902", "abx1", "99", "ABX2", "", "AB"})) {
        found += TextOf(tree, node) + "|";
    }
    EXPECT_EQ(found, "9902 " + Big5("七") + "|ABX1 one|none|abx2 two|none|none|");
    quotes.symbolByTreeId = {{"abx2", "SEP"}, {"9901", "9902"}};
    EXPECT_EQ(tree.FindCodes({"sep"})[0], kNone);
    quotes.symbolIdIsRealMonth = true;
    EXPECT_EQ(TextOf(tree, tree.FindCodes({"sep"})[0]), "abx2 two") << "what it is charted as";
    EXPECT_EQ(TextOf(tree, tree.FindCodes({"9902"})[0]), "9902 " + Big5("七"));
}

// A name that ends in half a character must not take the next text's first letter for its other
// half.
TEST_F(SymbolTrees, ANameThatEndsInHalfACharacter) {
    AddMarket(2, "M");
    quotes.symbols[{2, ""}] = {{"long", "abc", "odd"},
                               {std::string(126, 'n') + "\xA4", "x\xA4", "y"}};
    const SymbolTree tree(quotes);
    EXPECT_EQ(TextOf(tree, tree.FindBeginning("ABC")), "abc x\xA4");
    EXPECT_EQ(TextOf(tree, tree.FindBeginning("Odd")), "odd y");
    EXPECT_EQ(TextOf(tree, tree.FindHolding("odd", kNone, 1)), "odd y");
}

TEST_F(SymbolTrees, TheWidestTextIsNotTheOneOfTheMostBytes) {
    std::array<int, 256> widths;
    widths.fill(10);
    widths['i'] = 3;
    EXPECT_EQ(SymbolTree().WidestNode(widths), kNone);
    AddMarket(2, "M");
    for (const auto& [other, widest] : {std::pair{"iiiiiiiiii", 1}, {"MMMMMM", 2}, {"MMMM", 1}}) {
        quotes.symbols[{2, ""}] = {{Big5("許功蓋國"), other}, {"", ""}};
        EXPECT_EQ(SymbolTree(quotes).WidestNode(widths), widest) << other;
    }
}

}  // namespace
}  // namespace ta::test
