#pragma once

#include "platform/DayNumber.h"
#include "platform/Export.h"
#include "platform/Types.h"

#include <ctime>

namespace ta {

/// Where the library takes the current time from.
class TADIALOGS_EXPORT Clock {
public:
    virtual ~Clock() = default;

    /// Seconds since 1970-01-01 00:00 UTC.
    virtual std::time_t Now() const = 0;
};

/// The clock in use: the machine's, unless another one was set.
TADIALOGS_EXPORT const Clock& CurrentClock();

/// Replaces the clock; null brings the machine's back. The caller keeps ownership and resets it
/// before destroying its clock.
TADIALOGS_EXPORT void SetClock(const Clock* clock);

/// The current local calendar date.
TADIALOGS_EXPORT CalendarDate LocalToday();

}  // namespace ta
