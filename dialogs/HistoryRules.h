#pragma once

#include "platform/DayNumber.h"
#include "platform/Types.h"

#include <array>
#include <cstdint>
#include <string_view>

/// The rules of a chart's history: which data periods there are, how long a bar is, how much is
/// read. No window is needed for them.
namespace ta::history {

/// The data types of the history dialog. Other numbers pass through it unchanged.
enum DataType : int { kDaily = 0, kWeekly = 1, kMonthly = 2, kMinutes = 3, kDataTypeCount = 4 };
/// How much is read: the last records, or everything from a day on.
enum ReadMode : int { kReadLast = 0, kReadFromDate = 1 };

/// Bar lengths that are offered, in minutes or in seconds.
constexpr std::array<int, 12> kBarLengths{120, 90, 60, 45, 30, 20, 15, 10, 5, 3, 2, 1};
constexpr int kMaxMinutes = 999;
constexpr int kDefaultMinutes = 5;
constexpr long kDefaultRecordCount = 1440;
constexpr long kMinRecordCount = 50;
constexpr long kMaxRecordCount = 4000;
/// The first start day, 1970-01-02, and how long before today the last one is.
constexpr long kFirstStartDay = 1;
constexpr long kLastStartDaysAgo = 30;

/// What kinds of history a user gets of a symbol.
struct AllowedPeriods {
    bool daily = false;
    bool weekly = false;
    bool monthly = false;
    bool minute = false;
    bool second = false;
    bool dividend = false;  ///< prices adjusted for dividends

    bool operator==(const AllowedPeriods&) const = default;
};

/// Asks the quote back-end, and for seconds the user's entitlement as well. Market 0 or an empty
/// symbol stands for no particular symbol: every period, no dividends.
AllowedPeriods PeriodsOf(std::uint8_t market, const CString& symbol);
/// Whether a data type is among the periods; false for a number outside 0 to 3.
bool IsAllowed(const AllowedPeriods& allowed, int dataType);
/// The first allowed one of daily, weekly, monthly and minutes; daily when there is none.
int FirstAllowedType(const AllowedPeriods& allowed);
/// The data type to show for a wanted one: itself, else the first allowed one; -1, none at all, for
/// a number outside 0 to 3.
int ShownType(const AllowedPeriods& allowed, int dataType);

/// What the history dialog is given and gives back.
struct Values {
    int dataType = kDaily;
    int minutes = kDefaultMinutes;
    int readMode = kReadLast;
    long recordCount = kDefaultRecordCount;
    long startDate = kFirstStartDay;  ///< days since 1970-01-01

    bool operator==(const Values&) const = default;
};

/// The values with defaults in the place of impossible ones: 5 minutes, 1440 records, the first
/// start day, reading from a start day.
Values Repaired(Values values);

/// The bar length of a typed text: its leading number, at least 1 and at most 999.
int MinutesOfText(std::string_view text);
/// Brings the count into 50 to 4000; true when it was not there.
bool LimitRecordCount(long& count);

enum class StartDateFault { None, TooEarly, InFuture, TooLate };
/// What is wrong with a start day that the user chose; days are compared, not times of day.
StartDateFault CheckStartDate(long day, long today);

/// Today's day number on the local calendar, by the clock in use.
long Today();

}  // namespace ta::history
