#pragma once

#include <cmath>

namespace ta {

/// `value` with at most `decimals` digits after the point, halves away from 0; never -0. Values
/// that are not finite stay what they are.
inline double RoundedTo(double value, int decimals) {
    const double scale = std::pow(10.0, decimals);
    return std::round(value * scale) / scale + 0.0;  // + 0.0 turns -0 into 0
}

/// Decimals that a price step needs, 0 to 6: 0.05 gives 2, 0.03125 gives 5.
inline int DecimalsOfStep(double step) {
    int decimals = 0;
    for (double scaled = step; decimals < 6 && std::abs(scaled - std::round(scaled)) > 1e-7;) {
        ++decimals;
        scaled = step * std::pow(10.0, decimals);
    }
    return decimals;
}

}  // namespace ta
