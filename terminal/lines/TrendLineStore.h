#pragma once

#include "platform/TaData.h"
#include "terminal/lines/TrendLine.h"

#include <QString>

#include <vector>

// The trend lines of charts in the settings repository. Lines are kept for a symbol in a data
// period (a BarsKey) and for the scale that they are drawn on, which is the trailing name of the
// repository's type key. Each edit here hands the lines to the store with the date, commits them
// and tells every chart view, which draws before the edit returns.

namespace ta::terminal {

/// The trailing name of lines on the prices, the one scale that the terminal draws lines on.
inline constexpr const char* kPriceLines = "price";

/// The data strings of a chart, in the order in which they were drawn.
std::vector<CString> StoredTrendLines(const BarsKey& chart);

enum class TrendLineAdding {
    Added,
    TooManyInAll,  ///< the user may keep no more lines
    TooManyOfSymbol,
    Failed,  ///< there is no symbol
};

/// Whether `lines` more lines may be added now. `limit`, when not null, gets the number that stands
/// against it.
TrendLineAdding MayAddTrendLines(const BarsKey& chart, int lines, int* limit = nullptr);

/// One line of an edit, by data strings: `from` goes and `to` comes, in its place. One of them may
/// be empty.
struct TrendLineEdit {
    CString from;
    CString to;
    int place = -1;  ///< without `from`: the place of `to` among the lines; -1: at the end
};

/// What became of an edit.
struct TrendLineResult {
    std::vector<TrendLineEdit> back;  ///< takes back what was done; empty: nothing was
    int missing = 0;                  ///< lines that were to go and are not there (any more)
    TrendLineAdding adding = TrendLineAdding::Added;  ///< another: the lines are as they were
    int limit = 0;                                    ///< that stands against adding
};

/// Does the edits that can be done, in their order. A line that is to come and is there already
/// stays the only one; so what was there, or was changed by others, is not in `back`. Equal lines
/// are one to the user and go together.
TrendLineResult EditTrendLines(const BarsKey& chart, const std::vector<TrendLineEdit>& edits,
                               const CString& scale = kPriceLines);

/// The edits that remove lines.
std::vector<TrendLineEdit> Removing(const std::vector<CString>& lines);

/// A line as it is listed.
struct ListedTrendLine {
    BarsKey chart;
    CString scale;  ///< kPriceLines, or what another program draws on
    CString data;
    CString date;  ///< of the last change of the symbol's lines, "YYYY-MM-DD"; empty when not known

    bool operator==(const ListedTrendLine&) const = default;
};

/// The lines of charts, symbol by symbol and period by period, equal ones once. Left out are lines
/// of other window classes, and what is stored under a key that is none.
std::vector<ListedTrendLine> ListTrendLines();

/// The name of a kind in the language in use: the library's, else one with the number. 0: a line
/// that cannot be read.
QString TrendLineKindName(int kind);

/// Whether the repository can read the string's kind.
bool IsTrendLine(const CString& data, int& kind);

}  // namespace ta::terminal
