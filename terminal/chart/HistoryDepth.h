#pragma once

#include "platform/Study.h"
#include "platform/TaData.h"

#include <QString>

#include <map>
#include <memory>
#include <utility>

namespace ta::terminal {

/// How much history of a data period a chart loads, as the history data dialog has it. At first all
/// there is.
struct HistoryDepth {
    int readMode = 1;  ///< 0 the last records, 1 everything since the start day
    long recordCount = 1440;
    long startDay = 1;  ///< days since 1970-01-01

    bool operator==(const HistoryDepth&) const = default;
};

/// By period code and minutes or seconds of a bar, as in BarsKey.
using HistoryDepths = std::map<std::pair<int, int>, HistoryDepth>;

/// Whether the user may see a data period: false for seconds that the contract does not allow, and
/// for those of a symbol without ticks.
bool MayShow(const BarsKey& history);

/// The part of `all` that is asked for: `all` itself when that is everything, an empty series when
/// it ends before the start day.
std::shared_ptr<const BarSeries> PartOf(const std::shared_ptr<const BarSeries>& all,
                                        const HistoryDepth& depth);

/// What the user is told when there is less than was asked for: what was asked, what there is, and
/// why. Empty when all that was asked for is there, and for a chart of everything.
QString ShortfallText(const BarSeries& all, const HistoryDepth& depth);

}  // namespace ta::terminal
