#include "terminal/frame/Periods.h"

#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "terminal/chart/HistoryDepth.h"
#include "terminal/lang/Language.h"
#include "terminal/quotes/MarketData.h"

namespace ta::terminal {

QString PeriodText(int code, int count) {
    const int index = PeriodIndex(code, count);
    return index >= 0 ? Tr(kPeriods[static_cast<std::size_t>(index)].textKey)
                      : Tr("IDS_TERMINAL-CHART_PERIOD")
                            .arg(ui::ToQString(Repository().PackTADataTypeString(code, count)));
}

PeriodSet AvailablePeriods(const MarketData& markets, std::uint8_t market, const CString& id) {
    PeriodSet available;
    for (std::size_t i = 0; i < kPeriods.size(); ++i) {
        available[i] = markets.HasPeriod(market, id, kPeriods[i].code);
    }
    return available;
}

bool IsThere(const MarketData& markets, const BarsKey& history) {
    return markets.HasPeriod(history.market, history.symbol, history.period) && MayShow(history);
}

BarsKey NearestHistory(const MarketData& markets, const BarsKey& history) {
    const PeriodSet available = AvailablePeriods(markets, history.market, history.symbol);
    BarsKey nearest = history;
    for (std::size_t i = 0; i < kPeriods.size() && !IsThere(markets, nearest); ++i) {
        if (available[i]) {
            nearest.period = kPeriods[i].code;
            nearest.count = kPeriods[i].count;
        }
    }
    return nearest;
}

}  // namespace ta::terminal
