#pragma once

#include "platform/ConfigStore.h"
#include "platform/Types.h"
#include "settings/LineList.h"

#include <map>
#include <set>
#include <vector>

namespace ta::settings {

/// The trend lines of all charts: class-symbol key, then type key, then lines. Symbols that lost
/// their last line are remembered until they are saved, so that the store loses them too.
class TrendLineTable {
public:
    using LinesByTypeKey = std::map<CString, LineList>;

    void Add(const CString& classSymbolKey, const CString& typeKey, const CString& line);
    /// Replaces the lines of one type key; none removes it.
    void Set(const CString& classSymbolKey, const CString& typeKey, std::vector<CString> lines);
    /// Null when there are none.
    const std::vector<CString>* Find(const CString& classSymbolKey, const CString& typeKey) const;
    /// Null when the symbol has no lines.
    const LinesByTypeKey* Find(const CString& classSymbolKey) const;

    unsigned CountOf(const CString& classSymbolKey) const;
    unsigned CountOfClass(const CString& chartClass) const;
    unsigned SymbolCountOfClass(const CString& chartClass) const;
    /// Drops every class-symbol key that contains the class text anywhere, its date as well.
    void Release(const CString& chartClass);

    /// The date of last change, or empty.
    CString UpdateDate(const CString& classSymbolKey) const;
    void SetUpdateDate(const CString& classSymbolKey, const CString& date);

    void Load(SMXCfgIO2& store);
    void Save(SMXCfgIO2& store);

private:
    void LoadSymbol(SMXCfgIO2& store, const CString& chartClass, const CString& symbolKey);

    std::map<CString, LinesByTypeKey> m_symbols;
    std::map<CString, CString> m_updateDates;
    std::set<CString> m_emptied;
};

}  // namespace ta::settings
