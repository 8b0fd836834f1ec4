#pragma once

#include "platform/Export.h"

#include <QObject>

#include <functional>

namespace ta::ui {

/// Where dialogs and controls take their timers from, so that tests can make them tick.
class TADIALOGS_EXPORT Timers {
public:
    virtual ~Timers() = default;

    /// Runs `tick` every so many milliseconds, from the event loop, until the timer is stopped or
    /// `owner` is destroyed. `id` is the owner's choice; a timer of the same id is replaced.
    virtual void Start(QObject& owner, int id, int milliseconds, std::function<void()> tick) = 0;
    /// Nothing when it does not run. May be called by the tick.
    virtual void Stop(QObject& owner, int id) = 0;
};

/// The timers in use: the machine's, unless others were set.
TADIALOGS_EXPORT Timers& CurrentTimers();
/// Null brings the machine's back. The caller keeps ownership.
TADIALOGS_EXPORT void SetTimers(Timers* timers);

}  // namespace ta::ui
