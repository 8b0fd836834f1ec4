#pragma once

#include "platform/Export.h"

#include <optional>

namespace ta {

struct CalendarDate {
    int year = 1970;
    int month = 1;  ///< 1 to 12
    int day = 1;    ///< 1 to 31

    bool operator==(const CalendarDate&) const = default;
};

/// Days since 1970-01-01 of a date of the Gregorian calendar in the years 1970 to 2069; nothing for
/// another year, a month outside 1 to 12 or a day outside 1 to 31. A day past the end of its month
/// counts on into the next one.
TADIALOGS_EXPORT std::optional<long> DayNumberFromDate(const CalendarDate& date);

/// The date of a day number; the inverse of the above, for any day number of a four-digit year.
TADIALOGS_EXPORT CalendarDate DateFromDayNumber(long dayNumber);

/// Day of the week of a day number: 0 Monday to 6 Sunday.
TADIALOGS_EXPORT int WeekdayFromDayNumber(long dayNumber);

}  // namespace ta
