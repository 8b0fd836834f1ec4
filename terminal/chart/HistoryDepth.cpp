#include "terminal/chart/HistoryDepth.h"

#include "dialogs/MXSetHistData.h"
#include "platform/ui/DateBridge.h"
#include "terminal/lang/Language.h"
#include "terminal/quotes/MarketData.h"

#include <algorithm>
#include <cmath>

namespace ta::terminal {
namespace {

constexpr int kLastRecords = 0;

QString DayText(double day) {
    return ui::DateOfDay(static_cast<long>(std::floor(day))).toString("yyyy/MM/dd");
}

BarSeries::const_iterator FirstAsked(const BarSeries& all, const HistoryDepth& depth) {
    if (depth.readMode == kLastRecords) {
        const auto count = static_cast<long>(all.size());
        return all.end() - std::clamp(depth.recordCount, 0L, count);
    }
    return std::ranges::lower_bound(all, static_cast<double>(depth.startDay), {}, &Bar::time);
}

}  // namespace

bool MayShow(const BarsKey& history) {
    enum { kSecondData = 4, kAnswers = 6 };
    bool allowed[kAnswers] = {};
    MXSetHistData::vCheckSymbolAllowTA(history.market, history.symbol, allowed[0], allowed[1],
                                       allowed[2], allowed[3], allowed[kSecondData], allowed[5]);
    return history.period != kSeconds || allowed[kSecondData];
}

std::shared_ptr<const BarSeries> PartOf(const std::shared_ptr<const BarSeries>& all,
                                        const HistoryDepth& depth) {
    if (all == nullptr || FirstAsked(*all, depth) == all->begin()) {
        return all;
    }
    return std::make_shared<const BarSeries>(FirstAsked(*all, depth), all->end());
}

QString ShortfallText(const BarSeries& all, const HistoryDepth& depth) {
    if (all.empty()) {
        return {};
    }
    const QString first = DayText(all.front().time);
    if (depth.readMode == kLastRecords) {
        return depth.recordCount <= static_cast<long>(all.size())
                   ? QString()
                   : Tr("IDS_TERMINAL-CHART_FEWER_RECORDS")
                         .arg(depth.recordCount)
                         .arg(all.size())
                         .arg(first);
    }
    const QString asked = DayText(static_cast<double>(depth.startDay));
    if (FirstAsked(all, depth) == all.end()) {
        return Tr("IDS_TERMINAL-CHART_ENDS_BEFORE").arg(asked, DayText(all.back().time));
    }
    const bool begins = depth.startDay > HistoryDepth().startDay &&
                        std::floor(all.front().time) > static_cast<double>(depth.startDay);
    return begins ? Tr("IDS_TERMINAL-CHART_BEGINS_LATER").arg(asked).arg(all.size()).arg(first)
                  : QString();
}

}  // namespace ta::terminal
