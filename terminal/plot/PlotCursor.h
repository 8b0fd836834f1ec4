#pragma once

#include "platform/CommonProp.h"

namespace ta::terminal {

/// Where the cursor line stands.
struct PlotCursor {
    int bar = -1;   ///< -1: there is none
    int pane = -1;  ///< of the horizontal line; -1: none
    double y = 0;   ///< of the horizontal line, pixels

    bool IsThere() const { return bar >= 0; }
};

/// What the level cursor line of a pane of prices locks on.
enum class CursorLock {
    Intelligent,  ///< the nearest of the four prices, where it is near
    Open,
    High,
    Low,
    Close,
    None,
};

/// By uCursorLineLockMode; an unknown one is intelligent, as its dialog shows it.
inline CursorLock CursorLockOf(const CommonProp& options) {
    const auto mode = options.uCursorLineLockMode;
    return mode <= static_cast<std::uint32_t>(CursorLock::None) ? static_cast<CursorLock>(mode)
                                                                : CursorLock::Intelligent;
}

}  // namespace ta::terminal
