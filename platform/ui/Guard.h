#pragma once

#include "platform/Export.h"

class QWidget;

namespace ta::ui {

/// Tells the user that memory is short; what cannot even be told stays untold. `parent`, of the
/// message box, may be null.
TADIALOGS_EXPORT void TellFailure(QWidget* parent) noexcept;

/// Runs `action`; false when it threw, which the user is told. For widgets that are no DialogBase,
/// which has its own Guard.
template <class Action>
bool GuardFor(QWidget* parent, const Action& action) noexcept {
    try {
        action();
        return true;
    } catch (...) {
        TellFailure(parent);
        return false;
    }
}

/// What `lookup` gives; nothing (false, 0, an empty text) when it throws. For operations that only
/// answer a question and have nobody to tell.
template <class Lookup>
auto NothingOnFailure(const Lookup& lookup) noexcept -> decltype(lookup()) {
    try {
        return lookup();
    } catch (...) {
        return {};
    }
}

}  // namespace ta::ui
