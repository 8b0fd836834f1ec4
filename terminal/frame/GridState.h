#pragma once

#include "dialogs/WindowLayouts.h"

#include <map>

namespace ta::terminal {

/// What the charts of one tab have in common.
struct ChartLinkSwitches {
    bool symbol = false;
    bool period = false;
    bool cursor = false;  ///< the cursor lines stand at the same time

    bool operator==(const ChartLinkSwitches&) const = default;
};

/// How the charts of one tab are arranged. The charts count from 0, those that are parked for want
/// of a window behind the others.
struct GridState {
    int format = layout::kFirstFormat;
    int active = 0;  ///< the chart that is worked with
    /// A chart that would be parked but has the last window, as it was the active one when there
    /// came to be fewer windows; -1: none.
    int guest = -1;
    /// By format, where the user has moved the dividers.
    std::map<int, layout::Places> dividers = {};
    ChartLinkSwitches links = {};

    bool operator==(const GridState&) const = default;
};

}  // namespace ta::terminal
