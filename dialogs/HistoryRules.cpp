#include "dialogs/HistoryRules.h"

#include "platform/Clock.h"
#include "platform/Entitlement.h"
#include "platform/QuoteInterface.h"
#include "platform/SyncInfo.h"
#include "settings/Repository.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace ta::history {
namespace {

constexpr unsigned char kSecondPeriod = 4;

bool MaySeeSeconds(std::uint8_t market) {
    const EntitlementService* service = CSyncInfo::GetSettingCFG().GetServices().entitlement;
    return (service == nullptr || service->bIsSecondDataAllowed(market)) &&
           Repository().IsSecondlyDataCanUse(kSecondPeriod) != 0;
}

/// The number that a text begins with, 0 when it begins with none; the nearest one that an int
/// holds.
int LeadingNumber(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    const bool negative = text.starts_with('-');
    int number = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), number).ec ==
        std::errc::result_out_of_range) {
        return negative ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
    }
    return number;
}

}  // namespace

AllowedPeriods PeriodsOf(std::uint8_t market, const CString& symbol) {
    if (market == 0 || symbol.empty()) {
        return {true, true, true, true, true, false};
    }
    const BKQuoteInterface& quotes = BKQuoteInterface::GetBKInterface();
    const auto has = [&](auto operation) {
        BKQuoteInterface::Items items;
        return (quotes.*operation)(items, market, symbol) && !items.empty();
    };
    return {has(&BKQuoteInterface::bGetTADailyItemNoByService),
            has(&BKQuoteInterface::bGetTAWeekItemNoByService),
            has(&BKQuoteInterface::bGetTAMonthItemNoByService),
            has(&BKQuoteInterface::bGetTA1ItemNoByService),
            MaySeeSeconds(market) && has(&BKQuoteInterface::bGetTickItemNoByService),
            quotes.bIsSupportDividend(market, symbol)};
}

bool IsAllowed(const AllowedPeriods& allowed, int dataType) {
    const bool periods[] = {allowed.daily, allowed.weekly, allowed.monthly, allowed.minute};
    return dataType >= 0 && dataType < kDataTypeCount && periods[dataType];
}

int FirstAllowedType(const AllowedPeriods& allowed) {
    for (int type = kDaily; type < kDataTypeCount; ++type) {
        if (IsAllowed(allowed, type)) {
            return type;
        }
    }
    return kDaily;
}

int ShownType(const AllowedPeriods& allowed, int dataType) {
    if (dataType < 0 || dataType >= kDataTypeCount) {
        return -1;
    }
    return IsAllowed(allowed, dataType) ? dataType : FirstAllowedType(allowed);
}

Values Repaired(Values values) {
    const auto repair = [](auto& value, bool isGood, auto instead) {
        if (!isGood) {
            value = instead;
        }
    };
    repair(values.minutes, values.minutes >= 1, kDefaultMinutes);
    repair(values.recordCount, values.recordCount >= 1, kDefaultRecordCount);
    repair(values.startDate, values.startDate >= kFirstStartDay, kFirstStartDay);
    repair(values.readMode, values.readMode == kReadLast || values.readMode == kReadFromDate,
           kReadFromDate);
    return values;
}

int MinutesOfText(std::string_view text) {
    return std::clamp(LeadingNumber(text), 1, kMaxMinutes);
}

bool LimitRecordCount(long& count) {
    const long given = count;
    count = std::clamp(count, kMinRecordCount, kMaxRecordCount);
    return count != given;
}

StartDateFault CheckStartDate(long day, long today) {
    if (day < kFirstStartDay) {
        return StartDateFault::TooEarly;
    }
    if (day > today) {
        return StartDateFault::InFuture;
    }
    return day > today - kLastStartDaysAgo ? StartDateFault::TooLate : StartDateFault::None;
}

long Today() {
    return DayNumberFromDate(LocalToday()).value_or(0);
}

}  // namespace ta::history
