#pragma once

#include "platform/ConfigStore.h"
#include "platform/Types.h"
#include "settings/LineList.h"

#include <map>
#include <vector>

namespace ta::settings {

/// The trend lines of all charts: class-symbol key, then type key, then lines. A symbol that lost
/// its last line is remembered until it is saved, so that the store loses it too.
class TrendLineTable {
public:
    using LinesByTypeKey = std::map<CString, LineList>;

    /// Adds one line at the end, unless an equal one is under the type key.
    void Add(const CString& chartClass, const CString& symbolKey, const CString& typeKey,
             const CString& line);
    /// Replaces the lines of one type key; none removes it.
    void Set(const CString& chartClass, const CString& symbolKey, const CString& typeKey,
             std::vector<CString> lines);
    /// Null when there are none. Valid until the next change.
    const std::vector<CString>* Find(const CString& classSymbolKey, const CString& typeKey) const;
    /// Null when the symbol has no lines.
    const LinesByTypeKey* Find(const CString& classSymbolKey) const;

    /// Lines of one symbol.
    unsigned CountOf(const CString& classSymbolKey) const;
    /// Lines, and symbols that have any, of all class-symbol keys that contain the text anywhere.
    unsigned CountOfClass(const CString& chartClass) const;
    unsigned SymbolCountOfClass(const CString& chartClass) const;
    /// Drops every class-symbol key that contains the class text anywhere, its date as well.
    void Release(const CString& chartClass);

    /// The date of last change, or empty.
    CString UpdateDate(const CString& classSymbolKey) const;
    void SetUpdateDate(const CString& classSymbolKey, const CString& date);

    /// Reads every symbol of the store. What it has takes the place of the lines in memory; symbols
    /// that it has not stay.
    void LoadTrendLineData(SMXCfgIO2& store);
    /// Writes every symbol under the class that it was loaded or drawn with. Does not commit.
    void Save(SMXCfgIO2& store);

private:
    /// A class may hold a "-", so a class-symbol key does not say where it ends.
    struct Symbol {
        CString chartClass;
        CString symbolKey;
        LinesByTypeKey lines;  ///< none: the store is to lose the symbol
    };

    Symbol& At(const CString& chartClass, const CString& symbolKey);
    void LoadSymbol(SMXCfgIO2& store, const CString& chartClass, const CString& symbolKey);

    std::map<CString, Symbol> m_symbols;  ///< by class-symbol key
    std::map<CString, CString> m_updateDates;
};

}  // namespace ta::settings
