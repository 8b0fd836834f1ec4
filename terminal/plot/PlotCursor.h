#pragma once

namespace ta::terminal {

/// Where the cursor line stands.
struct PlotCursor {
    int bar = -1;   ///< -1: there is none
    int pane = -1;  ///< of the horizontal line; -1: none
    double y = 0;   ///< of the horizontal line, pixels

    bool IsThere() const { return bar >= 0; }
};

}  // namespace ta::terminal
