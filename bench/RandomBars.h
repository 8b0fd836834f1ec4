#pragma once

#include "platform/Study.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace ta::bench {

/// Daily bars that wander around 1000, the same ones each time.
inline BarSeries RandomWalk(int count) {
    std::mt19937 random(1);
    std::normal_distribution<double> change(0, 0.01);
    BarSeries bars;
    double close = 1000;
    for (int i = 0; i < count; ++i) {
        Bar bar;
        bar.time = 1000 + i;
        bar.open = close;
        close *= std::exp(change(random) - 0.002 * std::log(close / 1000));
        bar.close = close;
        bar.high = std::max(bar.open, bar.close) * 1.004;
        bar.low = std::min(bar.open, bar.close) * 0.996;
        bar.volume = 1e6 * (1 + std::abs(change(random)) * 100);
        bars.push_back(bar);
    }
    return bars;
}

}  // namespace ta::bench
