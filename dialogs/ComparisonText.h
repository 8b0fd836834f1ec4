#pragma once

#include "dialogs/HistoryRules.h"
#include "platform/QuoteInterface.h"
#include "platform/Types.h"

#include <cstdint>
#include <utility>
#include <vector>

/// The rules of comparing symbols: what can be chosen, what is chosen, and how both are written.
namespace ta::compare {

/// The markets with daily history, each with its label: the name in square brackets.
class MarketTable {
public:
    MarketTable() = default;
    /// Asks the back-end for its markets, in display order.
    explicit MarketTable(const BKQuoteInterface& quotes);

    /// The label of the first entry with the id; empty when there is none.
    CString Label(std::uint8_t market) const;
    /// The first market whose label is `label`, to which a missing "]" at its end is added; 0 when
    /// there is none, or `label` is null. A "]" that is the second half of a character is none.
    /// Needs no memory.
    std::uint8_t Id(const char* label) const;

private:
    std::vector<std::pair<std::uint8_t, CString>> m_entries;
};

/// The display fields of a symbol, of items 1018 and 2020 or 1019. Which name item is asked for is
/// settled by the first call in the process. False, and nothing set, when the back-end does not
/// know the symbol.
bool SymbolFields(const BKQuoteInterface& quotes, std::uint8_t market, const CString& code,
                  CString& symbolText, CString& nameText);

/// A chosen symbol as the list shows it: "[label]text name", or "[label]code ???" for a symbol that
/// the back-end does not know.
CString ChosenText(const BKQuoteInterface& quotes, const MarketTable& markets, std::uint8_t market,
                   const CString& code);

/// The id that a leaf's text ("id name") begins with: what stands before the first blank within its
/// first 127 bytes; half a character at their end is left out.
CString IdOfLeafText(const CString& text);
/// The market label that a row's text begins with, without its "]": what stands before the first
/// blank, and in that before the first "]". A name that holds a blank or a "]" is cut there.
CString LabelOfChosenText(const CString& text);

/// The line that describes a data setting, in the language in use. A data type outside 0 to 3 is
/// left out; any read mode but 0 is a start date.
CString DataDescription(const history::Values& values);

}  // namespace ta::compare
