#include "terminal/frame/Periods.h"

#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
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

}  // namespace ta::terminal
