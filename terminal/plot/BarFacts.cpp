#include "terminal/plot/BarFacts.h"

#include <algorithm>

namespace ta::terminal {

BarFacts BarFacts::Of(const BarSeries& bars) {
    BarFacts facts;
    facts.hasVolume = std::ranges::any_of(bars, [](const Bar& bar) { return bar.volume != 0; });
    facts.closesOnly =
        !bars.empty() && !facts.hasVolume && std::ranges::all_of(bars, [](const Bar& bar) {
            return bar.low == bar.high && bar.open == bar.close;
        });
    for (const Bar& bar : bars) {
        facts.prices.Add(bar.low);
        facts.prices.Add(bar.high);
    }
    return facts;
}

}  // namespace ta::terminal
