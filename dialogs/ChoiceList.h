#pragma once

#include "platform/ComparisonSets.h"
#include "platform/Types.h"

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace ta::compare {

/// The chosen symbols of a comparison, in order, each with the text of its row, so that rows and
/// symbols cannot part, not even where an operation throws: it then has changed nothing. The limit
/// holds for what is added, not for what was there at the start.
class ChoiceList {
public:
    enum class Added { Yes, Twice, Full };
    using TextOf = std::function<CString(const ComparedSymbol&)>;

    /// `limit`: the most symbols; 0 and below lets none be added. `textOf` writes a symbol's row.
    ChoiceList(const std::vector<ComparedSymbol>& symbols, int limit, TextOf textOf);

    const std::vector<ComparedSymbol>& Symbols() const { return m_symbols; }
    const std::vector<CString>& Texts() const { return m_texts; }
    int Count() const { return static_cast<int>(m_symbols.size()); }
    int Limit() const { return m_limit; }
    bool IsFull() const { return Count() >= m_limit; }
    bool IsOverLimit() const { return Count() > m_limit; }

    /// Appends a symbol unless the list is full or shows its text already.
    Added Add(const ComparedSymbol& symbol);
    /// Removes a row; the row to select then, -1 when none is left. A row that is not there is left
    /// alone, with -1.
    int Remove(int row);
    /// Brings the row to the place `to`; false when either is not there or they are the same.
    bool Move(int row, int to);
    void SetSymbols(std::vector<ComparedSymbol> symbols);
    /// Writes the rows again, after the language has changed.
    void WriteTexts();

private:
    bool IsRow(int row) const { return row >= 0 && row < Count(); }
    std::vector<CString> TextsOf(const std::vector<ComparedSymbol>& symbols) const;

    std::vector<ComparedSymbol> m_symbols;
    std::vector<CString> m_texts;
    int m_limit;
    TextOf m_textOf;
};

/// The codes of a pasted text, which blanks, tabs, line ends, commas and semicolons part; each
/// once, in their order.
std::vector<CString> CodesOfText(const CString& text);

/// The symbols added lately, newest first: of the service, which may be null, else of this run.
std::vector<ComparedSymbol> RecentSymbols(const ComparisonSets* sets);
/// Puts a symbol before the others, of which the ten newest stay.
void RememberSymbol(ComparisonSets* sets, const ComparedSymbol& symbol);

}  // namespace ta::compare
