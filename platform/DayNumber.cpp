#include "platform/DayNumber.h"

namespace ta {
namespace {

// Days from 0000-03-01, the start of the shifted calendar in which February ends the year, to
// 1970-01-01, less one because days of a month count from 1.
constexpr long kEpochShift = 719469;
constexpr long kDaysPer400Years = 146097;
constexpr long kDaysPer4Years = 1461;

}  // namespace

std::optional<long> DayNumberFromDate(const CalendarDate& date) {
    if (date.year < 1970 || date.year > 2069 || date.month < 1 || date.month > 12 || date.day < 1 ||
        date.day > 31) {
        return std::nullopt;
    }
    const bool endsShiftedYear = date.month <= 2;
    const long month = endsShiftedYear ? date.month + 9 : date.month - 3;
    const long year = endsShiftedYear ? date.year - 1 : date.year;
    const long century = year / 100;
    const long yearOfCentury = year % 100;
    return date.day - kEpochShift + (153 * month + 2) / 5 + century * kDaysPer400Years / 4 +
           yearOfCentury * kDaysPer4Years / 4;
}

CalendarDate DateFromDayNumber(long dayNumber) {
    const long days = dayNumber + kEpochShift - 1;
    const long century = (4 * days + 3) / kDaysPer400Years;
    const long dayOfCentury = days - century * kDaysPer400Years / 4;
    const long yearOfCentury = (4 * dayOfCentury + 3) / kDaysPer4Years;
    const long dayOfYear = dayOfCentury - yearOfCentury * kDaysPer4Years / 4;
    const long month = (5 * dayOfYear + 2) / 153;
    const bool endsShiftedYear = month >= 10;
    return {static_cast<int>(century * 100 + yearOfCentury + (endsShiftedYear ? 1 : 0)),
            static_cast<int>(endsShiftedYear ? month - 9 : month + 3),
            static_cast<int>(dayOfYear - (153 * month + 2) / 5 + 1)};
}

int WeekdayFromDayNumber(long dayNumber) {
    // 1970-01-01 was a Thursday.
    return static_cast<int>(((dayNumber + 3) % 7 + 7) % 7);
}

}  // namespace ta
