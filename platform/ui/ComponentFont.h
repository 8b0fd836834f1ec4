#pragma once

#include "platform/Export.h"

#include <QFont>

/// The font that the dialogs' lists, trees and pickers share.
class TADIALOGS_EXPORT CComponentComFont {
public:
    /// The terminal's font as it is now: its family and size. By value, and the caller's.
    static QFont GetComponentComFont();
};
