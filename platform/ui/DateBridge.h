#pragma once

#include "platform/DayNumber.h"

#include <QDate>
#include <QTime>

#include <cmath>
#include <optional>

/// The toolkit's dates and times of day, to and from day numbers (days since 1970-01-01) and
/// fractions of a day.
namespace ta::ui {

constexpr int kSecondsOfDay = 86400;

/// The date of a day number, negative ones included.
inline QDate DateOfDay(long dayNumber) {
    return QDate(1970, 1, 1).addDays(dayNumber);
}

/// The day number of a date; nothing for an invalid date and for years outside 1970 to 2069.
inline std::optional<long> DayOfDate(const QDate& date) {
    return DayNumberFromDate({date.year(), date.month(), date.day()});
}

/// The time of day of a fraction of a day, 0.0 up to but not including 1.0, or of the fraction of a
/// day number with time: whole seconds, the rest cut off. 0.75 is 18:00:00.
inline QTime TimeOfFraction(double fraction) {
    const double part = fraction - std::floor(fraction);
    return QTime(0, 0).addSecs(static_cast<int>(part * kSecondsOfDay));
}

}  // namespace ta::ui
