#include "settings/TrendLineTable.h"

#include "settings/TrendLineKeys.h"

#include <algorithm>
#include <utility>

namespace ta::settings {
namespace {

bool ContainsText(const CString& classSymbolKey, const CString& chartClass) {
    return classSymbolKey.find(chartClass) != CString::npos;
}

unsigned CountLines(const TrendLineTable::LinesByTypeKey& lines) {
    std::size_t count = 0;
    for (const auto& [typeKey, list] : lines) {
        count += list.Lines().size();
    }
    return static_cast<unsigned>(count);
}

}  // namespace

void TrendLineTable::Add(const CString& chartClass, const CString& symbolKey,
                         const CString& typeKey, const CString& line) {
    At(chartClass, symbolKey).lines[typeKey].Add(line);
}

void TrendLineTable::Set(const CString& chartClass, const CString& symbolKey,
                         const CString& typeKey, std::vector<CString> lines) {
    if (!lines.empty()) {
        At(chartClass, symbolKey).lines[typeKey] = LineList(std::move(lines));
        return;
    }
    const auto symbol = m_symbols.find(PackTrendLineSymbolKey(chartClass, symbolKey));
    if (symbol != m_symbols.end()) {
        symbol->second.lines.erase(typeKey);
    }
}

TrendLineTable::Symbol& TrendLineTable::At(const CString& chartClass, const CString& symbolKey) {
    Symbol& symbol = m_symbols[PackTrendLineSymbolKey(chartClass, symbolKey)];
    symbol.chartClass = chartClass;
    symbol.symbolKey = symbolKey;
    return symbol;
}

const std::vector<CString>* TrendLineTable::Find(const CString& classSymbolKey,
                                                 const CString& typeKey) const {
    const LinesByTypeKey* lines = Find(classSymbolKey);
    if (lines == nullptr) {
        return nullptr;
    }
    const auto found = lines->find(typeKey);
    return found == lines->end() ? nullptr : &found->second.Lines();
}

const TrendLineTable::LinesByTypeKey* TrendLineTable::Find(const CString& classSymbolKey) const {
    const auto found = m_symbols.find(classSymbolKey);
    return found == m_symbols.end() || found->second.lines.empty() ? nullptr : &found->second.lines;
}

unsigned TrendLineTable::CountOf(const CString& classSymbolKey) const {
    const LinesByTypeKey* lines = Find(classSymbolKey);
    return lines == nullptr ? 0 : CountLines(*lines);
}

unsigned TrendLineTable::CountOfClass(const CString& chartClass) const {
    unsigned count = 0;
    for (const auto& [classSymbolKey, symbol] : m_symbols) {
        if (ContainsText(classSymbolKey, chartClass)) {
            count += CountLines(symbol.lines);
        }
    }
    return count;
}

unsigned TrendLineTable::SymbolCountOfClass(const CString& chartClass) const {
    return static_cast<unsigned>(std::ranges::count_if(m_symbols, [&](const auto& entry) {
        return !entry.second.lines.empty() && ContainsText(entry.first, chartClass);
    }));
}

void TrendLineTable::Release(const CString& chartClass) {
    const auto contains = [&](const auto& entry) { return ContainsText(entry.first, chartClass); };
    std::erase_if(m_symbols, contains);
    std::erase_if(m_updateDates, contains);
}

CString TrendLineTable::UpdateDate(const CString& classSymbolKey) const {
    const auto found = m_updateDates.find(classSymbolKey);
    return found == m_updateDates.end() ? CString() : found->second;
}

void TrendLineTable::SetUpdateDate(const CString& classSymbolKey, const CString& date) {
    m_updateDates[classSymbolKey] = date;
}

void TrendLineTable::LoadTrendLineData(SMXCfgIO2& store) {
    std::vector<CString> classes;
    store.LoadTATrendLineSettingClass(classes);
    for (const CString& chartClass : classes) {
        std::vector<CString> symbolKeys;
        store.LoadTATrendLineSettingSymbols(chartClass, symbolKeys);
        for (const CString& symbolKey : symbolKeys) {
            LoadSymbol(store, chartClass, symbolKey);
        }
    }
}

void TrendLineTable::LoadSymbol(SMXCfgIO2& store, const CString& chartClass,
                                const CString& symbolKey) {
    const CString classSymbolKey = PackTrendLineSymbolKey(chartClass, symbolKey);
    unsigned char service = 0;
    CString symbol;
    CString date;
    if (DecodeSymbolKey(symbolKey, service, symbol) &&
        store.LoadTATrendLineSymbolUpdTime(chartClass, service, symbol, date)) {
        m_updateDates[classSymbolKey] = date;
    }
    TrendLinesByType stored;
    if (!store.LoadTATrendLine(chartClass, symbolKey, stored)) {
        return;
    }
    m_symbols.erase(classSymbolKey);
    for (auto& [typeKey, lines] : stored) {
        Set(chartClass, symbolKey, typeKey, std::move(lines));
    }
}

void TrendLineTable::Save(SMXCfgIO2& store) {
    for (const auto& [classSymbolKey, symbol] : m_symbols) {
        TrendLinesByType stored;
        stored.reserve(symbol.lines.size());
        for (const auto& [typeKey, list] : symbol.lines) {
            stored.emplace_back(typeKey, list.Lines());
        }
        store.SaveTATrendLine(symbol.chartClass, symbol.symbolKey, stored);
        if (stored.empty()) {
            m_updateDates.erase(classSymbolKey);
        }
    }
    std::erase_if(m_symbols, [](const auto& entry) { return entry.second.lines.empty(); });
}

}  // namespace ta::settings
