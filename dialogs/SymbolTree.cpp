#include "dialogs/SymbolTree.h"

#include "platform/Text.h"

#include <algorithm>
#include <map>
#include <unordered_map>

namespace ta::compare {
namespace {

using Texts = BKQuoteInterface::Texts;

constexpr std::uint8_t kShares = 16;
constexpr std::uint8_t kFutures = 'm';
constexpr std::uint8_t kCommodities = 1;
constexpr std::uint8_t kNeverShown = 'O';

bool StandsAtTheTop(std::uint8_t market) {
    return market == kShares || market == kFutures;
}

bool HasDaily(const BKQuoteInterface& quotes, std::uint8_t market) {
    BKQuoteInterface::Items items;
    return quotes.bGetTADailyItemNoByService(items, market, "") && !items.empty();
}

bool HasWeekly(const BKQuoteInterface& quotes, std::uint8_t market, const CString& commodity,
               const CString& month) {
    CString id;
    return quotes.GetWeeklyContractIDByContractMonth(id, market, commodity, month) != 0 &&
           (commodity != "ETXO" || month.find("1W") != CString::npos);
}

/// Whether whole characters of `text` are `wanted`; both upper-cased, `wanted` not empty.
bool Holds(std::string_view text, std::string_view wanted) {
    for (std::size_t found = text.find(wanted), i = 0; found != std::string_view::npos;
         found = text.find(wanted, found + 1)) {
        while (i < found) {
            i += text::CharLength(text, i);
        }
        if (i == found) {
            return true;
        }
    }
    return false;
}

/// Makes room for `count` more elements; the first of them.
template <class Values>
auto* Extend(Values& values, std::size_t count) {
    values.resize(values.size() + count);
    return values.data() + values.size() - count;
}

}  // namespace

SymbolTree::SymbolTree(const BKQuoteInterface& quotes) {
    std::vector<std::uint8_t> ids;
    Texts names;
    quotes.bGetQuoteServiceID(ids, names);
    names.resize(ids.size());
    for (const bool top : {true, false}) {
        for (std::size_t i = 0; i < ids.size(); ++i) {
            if (ids[i] != kNeverShown && StandsAtTheTop(ids[i]) == top) {
                AddMarket(quotes, ids[i], names[i]);
            }
        }
    }
    LinkChildren();
}

void SymbolTree::AddMarket(const BKQuoteInterface& quotes, std::uint8_t market,
                           const CString& name) {
    const int node = AddGroup(kNone, kMarketData, name);
    if (!HasDaily(quotes, market)) {
        return;
    }
    if (market != kCommodities && market != kFutures) {
        AddCommodity(quotes, node, market, {});
        return;
    }
    Texts ids;
    Texts names;
    quotes.bGetAllCommodityID(ids, names, market);
    names.resize(ids.size());
    for (std::size_t i = 0; i < ids.size(); ++i) {
        const int parent =
            ids[i].empty() ? node : AddGroup(node, kCommodityData, ids[i] + ' ' + names[i]);
        AddCommodity(quotes, parent, market, ids[i]);
    }
}

void SymbolTree::AddCommodity(const BKQuoteInterface& quotes, int parent, std::uint8_t market,
                              const CString& commodity) {
    Texts ids;
    Texts names;
    quotes.bGetSymbolItemID(ids, names, market, commodity);
    AddSymbols(parent, market, ids, names);
    if (market == kFutures) {
        AddWeeklyContracts(quotes, parent, market, commodity);
    }
}

void SymbolTree::AddWeeklyContracts(const BKQuoteInterface& quotes, int parent, std::uint8_t market,
                                    const CString& commodity) {
    Texts months;
    quotes.bGetContractMonthByCommodity(months, market, commodity);
    for (const CString& month : months) {
        if (HasWeekly(quotes, market, commodity, month)) {
            Texts ids;
            Texts names;
            quotes.bGetSymbolID(ids, names, market, month);
            AddSymbols(parent, market, ids, names);
        }
    }
}

void SymbolTree::AddSymbols(int parent, std::uint8_t market, const Texts& ids, const Texts& names) {
    const auto nameOf = [&names](std::size_t i) {
        return i < names.size() ? std::string_view(names[i]) : std::string_view();
    };
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < ids.size(); ++i) {
        bytes += ids[i].size() + nameOf(i).size() + 2;
    }
    char* at = Extend(m_texts, bytes);
    std::uint32_t end = m_textBegins.back();
    std::uint32_t* begins = Extend(m_textBegins, ids.size());
    for (std::size_t i = 0; i < ids.size(); ++i) {
        const char* const start = at;
        at = std::ranges::copy(ids[i], at).out;
        *at++ = ' ';
        at = std::ranges::copy(nameOf(i), at).out;
        *at++ = '\0';
        begins[i] = end += static_cast<std::uint32_t>(at - start);
    }
    m_data.insert(m_data.end(), ids.size(), market);
    m_parents.insert(m_parents.end(), ids.size(), parent);
}

int SymbolTree::AddGroup(int parent, int data, const CString& text) {
    m_texts.append(text).push_back('\0');
    m_textBegins.push_back(static_cast<std::uint32_t>(m_texts.size()));
    m_data.push_back(static_cast<std::int16_t>(data));
    m_parents.push_back(parent);
    return NodeCount() - 1;
}

void SymbolTree::LinkChildren() {
    const std::size_t count = m_data.size();
    m_rows.resize(count);
    m_children.resize(count);
    m_childBegins.assign(count + 2, 0);
    for (std::size_t node = 0; node < count; ++node) {
        m_rows[node] = m_childBegins[static_cast<std::size_t>(m_parents[node] + 2)]++;
    }
    for (std::size_t i = 1; i < m_childBegins.size(); ++i) {
        m_childBegins[i] += m_childBegins[i - 1];
    }
    for (std::size_t node = 0; node < count; ++node) {
        const int begin = m_childBegins[static_cast<std::size_t>(m_parents[node] + 1)];
        m_children[static_cast<std::size_t>(begin + m_rows[node])] = static_cast<int>(node);
    }
}

int SymbolTree::ChildCount(int parent) const {
    return At(m_childBegins, parent + 2) - At(m_childBegins, parent + 1);
}

int SymbolTree::Child(int parent, int row) const {
    return At(m_children, At(m_childBegins, parent + 1) + row);
}

std::string_view SymbolTree::TextIn(const CString& texts, int node) const {
    const std::uint32_t begin = m_textBegins[static_cast<std::size_t>(node)];
    const std::uint32_t end = m_textBegins[static_cast<std::size_t>(node) + 1];
    return {texts.data() + begin, end - begin - 1};
}

const CString& SymbolTree::UpperTexts() const {
    if (m_upperTexts.size() != m_texts.size()) {
        m_upperTexts = text::ToUpper(m_texts);
    }
    return m_upperTexts;
}

int SymbolTree::WidestNode(const std::array<int, 256>& widths) const {
    int widest = kNone;
    int most = -1;
    for (int node = 0; node < NodeCount(); ++node) {
        const std::string_view text = Text(node);
        int width = 0;
        for (std::size_t i = 0; i < text.size(); i += text::CharLength(text, i)) {
            width += widths[static_cast<unsigned char>(text[i])];
        }
        if (width > most) {
            most = width;
            widest = node;
        }
    }
    return widest;
}

int SymbolTree::FindBeginning(const CString& typed) const {
    const CString wanted = text::ToUpper(typed);
    if (wanted.empty()) {
        return kNone;
    }
    const CString& texts = UpperTexts();
    const std::size_t last = wanted.size() - 1;
    for (int node = 0; node < NodeCount(); ++node) {
        const std::string_view text = TextIn(texts, node);
        // Codes of one market differ at their ends rather than at their beginnings.
        if (text.size() > last && text[last] == wanted[last] && text.starts_with(wanted) &&
            IsLeaf(node)) {
            return node;
        }
    }
    return kNone;
}

int SymbolTree::FindHolding(const CString& typed, int from, int step) const {
    const CString wanted = text::ToUpper(typed);
    const int count = NodeCount();
    if (wanted.empty()) {
        return kNone;
    }
    const std::vector<CString>& others = OtherNames();
    int node = from == kNone && step < 0 ? count : from;
    for (int tried = 0; tried < count; ++tried) {
        node = (node + step + count) % count;
        if (IsLeaf(node) && (Holds(TextIn(UpperTexts(), node), wanted) ||
                             Holds(others[static_cast<std::size_t>(node)], wanted))) {
            return node;
        }
    }
    return kNone;
}

const std::vector<CString>& SymbolTree::OtherNames() const {
    if (m_otherNames.size() != m_data.size()) {
        std::vector<CString> names(m_data.size());
        std::map<int, std::vector<int>> leavesByMarket;
        for (int node = 0; node < NodeCount(); ++node) {
            if (IsLeaf(node)) {
                leavesByMarket[ItemData(node)].push_back(node);
            }
        }
        for (const auto& [market, nodes] : leavesByMarket) {
            AskOtherNames(nodes, names);
        }
        m_otherNames = std::move(names);
    }
    return m_otherNames;
}

void SymbolTree::AskOtherNames(const std::vector<int>& nodes, std::vector<CString>& names) const {
    const auto market = static_cast<std::uint8_t>(ItemData(nodes.front()));
    Texts ids;
    for (const int node : nodes) {
        const std::string_view text = Text(node);
        ids.emplace_back(text.substr(0, text.find(' ')));
    }
    Texts given;
    if (BKQuoteInterface::GetBKInterface().bGetSymbolOtherNames(given, market, ids)) {
        given.resize(ids.size());
        for (std::size_t i = 0; i < ids.size(); ++i) {
            names[static_cast<std::size_t>(nodes[i])] = text::ToUpper(given[i]);
        }
    }
}

std::vector<int> SymbolTree::FindCodes(const std::vector<CString>& codes) const {
    std::unordered_map<CString, int> found;
    for (const CString& code : codes) {
        found.emplace(text::ToUpper(code), kNone);
    }
    const auto take = [&](int node, const CString& id) {
        const auto wanted = IsLeaf(node) ? found.find(id) : found.end();
        if (wanted != found.end() && wanted->second == kNone) {
            wanted->second = node;
        }
    };
    const auto idIn = [](std::string_view text) { return CString(text.substr(0, text.find(' '))); };
    for (int node = 0; node < NodeCount(); ++node) {
        take(node, idIn(TextIn(UpperTexts(), node)));
    }
    const BKQuoteInterface& quotes = BKQuoteInterface::GetBKInterface();
    for (int node = 0; quotes.GetSymbolIDIsRealMonth() && node < NodeCount(); ++node) {
        take(node, text::ToUpper(SymbolOfTreeId(quotes, idIn(Text(node)))));
    }
    std::vector<int> nodes;
    nodes.reserve(codes.size());
    for (const CString& code : codes) {
        nodes.push_back(found.at(text::ToUpper(code)));
    }
    return nodes;
}

CString SymbolOfTreeId(const BKQuoteInterface& quotes, const CString& treeId) {
    CString symbol;
    const bool converted =
        quotes.GetSymbolIDIsRealMonth() && quotes.bGetSymbolIDByContractMonthSymbID(symbol, treeId);
    return converted ? symbol : treeId;
}

}  // namespace ta::compare
