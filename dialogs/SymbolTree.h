#pragma once

#include "platform/QuoteInterface.h"
#include "platform/Types.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace ta::compare {

/// All symbols of the quote back-end as a tree: markets, commodities in some of them, symbols. Flat
/// arrays hold it, nothing is made for a single symbol. Nodes are numbers from 0 in the order in
/// which the tree is written, each parent before its children.
class SymbolTree {
public:
    /// In the place of a node: none; as a parent, the invisible root above the markets.
    static constexpr int kNone = -1;
    // What stands in the place of a market id in nodes that are no symbol.
    static constexpr int kMarketData = -1;
    static constexpr int kCommodityData = -2;

    SymbolTree() = default;
    /// Asks for everything. Markets 16 and 'm' come first and 'O' never; a market without daily
    /// history has no children; markets 1 and 'm' are listed by commodity, and in 'm' the symbols
    /// of weekly contracts follow those of the commodity.
    explicit SymbolTree(const BKQuoteInterface& quotes);

    int NodeCount() const { return static_cast<int>(m_data.size()); }
    int ChildCount(int parent) const;
    int Child(int parent, int row) const;
    int Parent(int node) const { return At(m_parents, node); }
    int Row(int node) const { return At(m_rows, node); }
    /// "id name" of a symbol or commodity, the name of a market. Valid as long as the tree is.
    std::string_view Text(int node) const { return TextIn(m_texts, node); }
    /// The market id of a symbol, else kMarketData or kCommodityData.
    int ItemData(int node) const { return At(m_data, node); }
    bool IsLeaf(int node) const { return ItemData(node) >= 0; }
    /// The node with the widest text, or kNone in an empty tree. `widths`: of a character, by its
    /// first byte.
    int WidestNode(const std::array<int, 256>& widths) const;

    /// The first symbol whose text begins with `typed`, upper and lower case alike; kNone when
    /// there is none or nothing was typed.
    int FindBeginning(const CString& typed) const;
    /// The next symbol after a node (kNone: from the start), or with `step` -1 the one before it,
    /// that holds `typed` in its id or in a name, in whichever language the back-end knows it.
    /// Goes on at the other end; kNone when no symbol holds it or nothing was typed.
    int FindHolding(const CString& typed, int from, int step) const;
    /// The first symbol of each code, without regard to case: of its tree id, else of the symbol id
    /// that a real-month id stands for. kNone for those not found.
    std::vector<int> FindCodes(const std::vector<CString>& codes) const;

private:
    template <class Value>
    static int At(const std::vector<Value>& values, int node) {
        return values[static_cast<std::size_t>(node)];
    }
    std::string_view TextIn(const CString& texts, int node) const;
    int AddGroup(int parent, int data, const CString& text);
    void AddMarket(const BKQuoteInterface& quotes, std::uint8_t market, const CString& name);
    void AddCommodity(const BKQuoteInterface& quotes, int parent, std::uint8_t market,
                      const CString& commodity);
    void AddWeeklyContracts(const BKQuoteInterface& quotes, int parent, std::uint8_t market,
                            const CString& commodity);
    void AddSymbols(int parent, std::uint8_t market, const BKQuoteInterface::Texts& ids,
                    const BKQuoteInterface::Texts& names);
    void LinkChildren();
    /// The texts upper-cased, made when they are first searched.
    const CString& UpperTexts() const;
    /// The other names of each node, upper-cased, asked for when they are first wanted.
    const std::vector<CString>& OtherNames() const;
    void AskOtherNames(const std::vector<int>& nodes, std::vector<CString>& names) const;

    // By node. The texts follow one another, each with a zero byte behind it.
    CString m_texts;
    mutable CString m_upperTexts;
    std::vector<std::uint32_t> m_textBegins{0};  ///< and where the next one would begin
    std::vector<std::int16_t> m_data;
    std::vector<std::int32_t> m_parents;
    std::vector<std::int32_t> m_rows;
    // Children of node n: m_children from m_childBegins[n + 1] to the next begin; the root is -1.
    std::vector<std::int32_t> m_children;
    std::vector<std::int32_t> m_childBegins{0, 0};
    mutable std::vector<CString> m_otherNames;
};

/// The symbol id of a tree's id: another one only where trees carry real-month ids.
CString SymbolOfTreeId(const BKQuoteInterface& quotes, const CString& treeId);

}  // namespace ta::compare
