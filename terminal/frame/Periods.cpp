#include "terminal/frame/Periods.h"

#include "terminal/quotes/MarketData.h"

namespace ta::terminal {

PeriodSet AvailablePeriods(const MarketData& markets, std::uint8_t market, const CString& id) {
    PeriodSet available;
    for (std::size_t i = 0; i < kPeriods.size(); ++i) {
        available[i] = markets.HasPeriod(market, id, kPeriods[i].code);
    }
    return available;
}

}  // namespace ta::terminal
