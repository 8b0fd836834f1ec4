#pragma once

#include "platform/Export.h"

namespace ta::sheet {

class SettingsSession;

/// What a page looks for in its parent: the settings sheet, which has the session that its pages
/// share.
class TADIALOGS_EXPORT SessionHost {
public:
    virtual SettingsSession& Session() const = 0;

protected:
    ~SessionHost() = default;
};

}  // namespace ta::sheet
