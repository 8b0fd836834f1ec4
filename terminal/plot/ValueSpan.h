#pragma once

#include <limits>

namespace ta::terminal {

/// The values that a scale has to show, or that there are.
struct ValueSpan {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    bool IsEmpty() const { return !(low <= high); }
    /// A NaN changes nothing.
    void Add(double value) {
        low = value < low ? value : low;
        high = value > high ? value : high;
    }
};

}  // namespace ta::terminal
