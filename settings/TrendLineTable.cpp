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

void TrendLineTable::Add(const CString& classSymbolKey, const CString& typeKey,
                         const CString& line) {
    m_symbols[classSymbolKey][typeKey].Add(line);
    m_emptied.erase(classSymbolKey);
}

void TrendLineTable::Set(const CString& classSymbolKey, const CString& typeKey,
                         std::vector<CString> lines) {
    if (!lines.empty()) {
        m_symbols[classSymbolKey][typeKey] = LineList(std::move(lines));
        m_emptied.erase(classSymbolKey);
        return;
    }
    const auto symbol = m_symbols.find(classSymbolKey);
    if (symbol == m_symbols.end()) {
        return;
    }
    symbol->second.erase(typeKey);
    if (symbol->second.empty()) {
        m_symbols.erase(symbol);
        m_emptied.insert(classSymbolKey);
    }
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
    return found == m_symbols.end() ? nullptr : &found->second;
}

unsigned TrendLineTable::CountOf(const CString& classSymbolKey) const {
    const LinesByTypeKey* lines = Find(classSymbolKey);
    return lines == nullptr ? 0 : CountLines(*lines);
}

unsigned TrendLineTable::CountOfClass(const CString& chartClass) const {
    unsigned count = 0;
    for (const auto& [classSymbolKey, lines] : m_symbols) {
        if (ContainsText(classSymbolKey, chartClass)) {
            count += CountLines(lines);
        }
    }
    return count;
}

unsigned TrendLineTable::SymbolCountOfClass(const CString& chartClass) const {
    return static_cast<unsigned>(std::ranges::count_if(
        m_symbols, [&](const auto& entry) { return ContainsText(entry.first, chartClass); }));
}

void TrendLineTable::Release(const CString& chartClass) {
    const auto contains = [&](const auto& entry) { return ContainsText(entry.first, chartClass); };
    std::erase_if(m_symbols, contains);
    std::erase_if(m_updateDates, contains);
    std::erase_if(m_emptied, [&](const CString& key) { return ContainsText(key, chartClass); });
}

CString TrendLineTable::UpdateDate(const CString& classSymbolKey) const {
    const auto found = m_updateDates.find(classSymbolKey);
    return found == m_updateDates.end() ? CString() : found->second;
}

void TrendLineTable::SetUpdateDate(const CString& classSymbolKey, const CString& date) {
    m_updateDates[classSymbolKey] = date;
}

void TrendLineTable::Load(SMXCfgIO2& store) {
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
    CString decodedClass;
    CString decodedSymbolKey;
    unsigned char service = 0;
    CString symbol;
    CString date;
    if (DecodeClassSymbolKey(classSymbolKey, decodedClass, decodedSymbolKey) &&
        DecodeSymbolKey(decodedSymbolKey, service, symbol) &&
        store.LoadTATrendLineSymbolUpdTime(decodedClass, service, symbol, date)) {
        m_updateDates[classSymbolKey] = date;
    }
    TrendLinesByType stored;
    if (!store.LoadTATrendLine(chartClass, symbolKey, stored)) {
        return;
    }
    m_symbols.erase(classSymbolKey);
    m_emptied.erase(classSymbolKey);
    LinesByTypeKey byTypeKey;
    for (auto& [typeKey, lines] : stored) {
        if (!lines.empty()) {
            byTypeKey[typeKey] = LineList(std::move(lines));
        }
    }
    if (!byTypeKey.empty()) {
        m_symbols[classSymbolKey] = std::move(byTypeKey);
    }
}

void TrendLineTable::Save(SMXCfgIO2& store) {
    CString chartClass;
    CString symbolKey;
    for (const CString& classSymbolKey : std::exchange(m_emptied, {})) {
        DecodeClassSymbolKey(classSymbolKey, chartClass, symbolKey);
        store.SaveTATrendLine(chartClass, symbolKey, {});
        m_updateDates.erase(classSymbolKey);
    }
    for (const auto& [classSymbolKey, lines] : m_symbols) {
        DecodeClassSymbolKey(classSymbolKey, chartClass, symbolKey);
        TrendLinesByType stored;
        stored.reserve(lines.size());
        for (const auto& [typeKey, list] : lines) {
            stored.emplace_back(typeKey, list.Lines());
        }
        store.SaveTATrendLine(chartClass, symbolKey, stored);
    }
}

}  // namespace ta::settings
