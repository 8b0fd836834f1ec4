#include "dialogs/ChoiceList.h"

#include <algorithm>
#include <unordered_set>

namespace ta::compare {
namespace {

constexpr std::size_t kMostRecent = 10;

std::vector<ComparedSymbol>& SymbolsOfThisRun() {
    static std::vector<ComparedSymbol> symbols;
    return symbols;
}

template <class Values>
void MoveEntry(Values& values, int from, int to) {
    const auto begin = values.begin();
    if (from < to) {
        std::rotate(begin + from, begin + from + 1, begin + to + 1);
    } else {
        std::rotate(begin + to, begin + from, begin + from + 1);
    }
}

}  // namespace

ChoiceList::ChoiceList(const std::vector<ComparedSymbol>& symbols, int limit, TextOf textOf)
    : m_limit(limit), m_textOf(std::move(textOf)) {
    SetSymbols(symbols);
}

ChoiceList::Added ChoiceList::Add(const ComparedSymbol& symbol) {
    if (IsFull()) {
        return Added::Full;
    }
    CString text = m_textOf(symbol);
    if (std::ranges::find(m_texts, text) != m_texts.end()) {
        return Added::Twice;
    }
    m_texts.reserve(m_texts.size() + 1);  // what comes after the symbol must not fail
    m_symbols.push_back(symbol);
    m_texts.push_back(std::move(text));
    return Added::Yes;
}

int ChoiceList::Remove(int row) {
    if (!IsRow(row)) {
        return -1;
    }
    m_symbols.erase(m_symbols.begin() + row);
    m_texts.erase(m_texts.begin() + row);
    return std::min(row, Count() - 1);
}

bool ChoiceList::Move(int row, int to) {
    if (!IsRow(row) || !IsRow(to) || row == to) {
        return false;
    }
    MoveEntry(m_symbols, row, to);
    MoveEntry(m_texts, row, to);
    return true;
}

void ChoiceList::SetSymbols(std::vector<ComparedSymbol> symbols) {
    m_texts = TextsOf(symbols);
    m_symbols = std::move(symbols);
}

void ChoiceList::WriteTexts() {
    m_texts = TextsOf(m_symbols);
}

std::vector<CString> ChoiceList::TextsOf(const std::vector<ComparedSymbol>& symbols) const {
    std::vector<CString> texts;
    std::ranges::transform(symbols, std::back_inserter(texts), m_textOf);
    return texts;
}

std::vector<CString> CodesOfText(const CString& text) {
    constexpr const char* kSeparators = " \t\r\n\v\f,;";
    std::vector<CString> codes;
    std::unordered_set<CString> seen;
    for (std::size_t begin = 0;
         (begin = text.find_first_not_of(kSeparators, begin)) != CString::npos;) {
        const std::size_t end = std::min(text.find_first_of(kSeparators, begin), text.size());
        const CString code = text.substr(begin, end - begin);
        if (seen.insert(code).second) {
            codes.push_back(code);
        }
        begin = end;
    }
    return codes;
}

std::vector<ComparedSymbol> RecentSymbols(const ComparisonSets* sets) {
    std::vector<ComparedSymbol> kept;
    if (sets != nullptr) {
        kept = sets->RecentSymbols();
    }
    return kept.empty() ? SymbolsOfThisRun() : kept;
}

void RememberSymbol(ComparisonSets* sets, const ComparedSymbol& symbol) {
    std::vector<ComparedSymbol> symbols = RecentSymbols(sets);
    std::erase(symbols, symbol);
    symbols.insert(symbols.begin(), symbol);
    symbols.resize(std::min(symbols.size(), kMostRecent));
    SymbolsOfThisRun() = symbols;
    if (sets != nullptr) {
        sets->SetRecentSymbols(symbols);
    }
}

}  // namespace ta::compare
