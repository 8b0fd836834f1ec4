#pragma once

#include "platform/TaData.h"
#include "terminal/lines/TrendLine.h"

#include <QString>

#include <map>
#include <utility>
#include <vector>

// The trend lines of charts in the settings repository. Lines are kept for a symbol in a data
// period (a BarsKey) and for the scale that they are drawn on, which is the trailing name of the
// repository's type key. Each edit here hands the lines to the store with the date, commits them
// and tells every chart view, which draws before the edit returns.

namespace ta::terminal {

/// The trailing name of lines on the prices, the one scale that the terminal draws lines on.
extern const char* const kPriceLines;

/// The data strings of a chart, in the order in which they were drawn.
std::vector<CString> StoredTrendLines(const BarsKey& chart);

enum class TrendLineAdding {
    Added,         ///< also when an equal line was there
    TooManyInAll,  ///< the user may keep no more lines
    TooManyOfSymbol,
    Failed,  ///< there is no symbol, or no text
};

/// Whether one more line may be added now. `limit`, when not null, gets the number that is reached.
TrendLineAdding MayAddTrendLine(const BarsKey& chart, int* limit = nullptr);
TrendLineAdding AddTrendLine(const BarsKey& chart, const CString& data, int* limit = nullptr);
/// Puts `to` in the place of `from`; when `to` is there already, `from` only goes. false, and
/// nothing changes, when `from` is not there (any more).
bool ReplaceTrendLine(const BarsKey& chart, const CString& from, const CString& to);
/// Removes those of `lines` that are there, and returns how many.
int RemoveTrendLines(const BarsKey& chart, const std::vector<CString>& lines);

/// What the repository keeps for one symbol.
struct TrendLineSymbol {
    CString chartClass;
    std::uint8_t market = 0;
    CString symbol;
    int count = 0;
    std::map<int, int> kinds;  ///< how many of each kind's number, drawable or not
    int unreadable = 0;        ///< data strings without kind
    CString date;              ///< of last change, "YYYY-MM-DD"; empty when not known
    std::vector<std::pair<int, int>> periods;  ///< with lines on the prices: code and count
};

/// Every symbol that has lines, class by class.
std::vector<TrendLineSymbol> ListTrendLineSymbols();

/// Removes every line of a chart class.
void ClearTrendLineClass(const CString& chartClass);

/// The name of a kind in the language in use: the library's, else one with the number.
QString TrendLineKindName(int kind);

/// Whether the repository can read the string's kind.
bool IsTrendLine(const CString& data, int& kind);

}  // namespace ta::terminal
