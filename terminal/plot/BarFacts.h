#pragma once

#include "platform/Study.h"
#include "terminal/plot/ValueSpan.h"

namespace ta::terminal {

/// What a history has to show.
struct BarFacts {
    bool closesOnly = false;  ///< no volume, and all prices of a bar are the same
    bool hasVolume = false;   ///< of any bar
    ValueSpan prices;

    static BarFacts Of(const BarSeries& bars);
};

}  // namespace ta::terminal
