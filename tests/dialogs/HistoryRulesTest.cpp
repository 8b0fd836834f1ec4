// The rules of the history dialog that need no window.

#include "dialogs/HistoryRules.h"
#include "platform/Clock.h"
#include "platform/SyncInfo.h"
#include "tests/support/MemoryQuotes.h"
#include "tests/support/MemoryServices.h"

#include <gtest/gtest.h>

namespace ta::test {
namespace {

using namespace ta::history;

class HistoryRules : public testing::Test {
protected:
    HistoryRules() {
        Services services;
        services.entitlement = &entitlement;
        CSyncInfo::GetSettingCFG().SetServices(services);
        BKQuoteInterface::SetBKInterface(&quotes);
    }
    ~HistoryRules() override {
        BKQuoteInterface::SetBKInterface(nullptr);
        CSyncInfo::GetSettingCFG().SetServices({});
    }
    /// "DWMmsV" of what there is.
    static std::string Kinds(std::uint8_t market, const CString& symbol) {
        const AllowedPeriods has = PeriodsOf(market, symbol);
        std::string kinds;
        for (const auto& [flag, letter] : {std::pair{has.daily, 'D'},
                                           {has.weekly, 'W'},
                                           {has.monthly, 'M'},
                                           {has.minute, 'm'},
                                           {has.second, 's'},
                                           {has.dividend, 'V'}}) {
            kinds += flag ? std::string{letter} : "";
        }
        return kinds;
    }

    MemoryQuotes quotes;
    MemoryEntitlement entitlement;
};

TEST_F(HistoryRules, EachPeriodIsAskedOfTheSymbol) {
    const MemoryQuotes::Code code{5, "A"};
    quotes.dailyItems[code] = quotes.weekItems[{5, "B"}] = {1};
    quotes.dailyItems[{5, "B"}] = {};
    EXPECT_EQ(Kinds(5, "A"), "D");
    EXPECT_EQ(Kinds(5, "B"), "W");
    quotes.dailyItems.clear();
    quotes.monthItems[code] = {1, 2};
    EXPECT_EQ(Kinds(5, "A"), "M");
    quotes.minuteItems[code] = quotes.tickItems[code] = {3};
    quotes.withDividend = {code};
    EXPECT_EQ(Kinds(5, "A"), "MmsV");
    entitlement.marketsWithoutSeconds = {5};
    EXPECT_EQ(Kinds(5, "A"), "MmV");
    EXPECT_EQ(Kinds(6, "A"), "");
    // No particular symbol: everything but dividends, whatever the user may have.
    EXPECT_EQ(Kinds(0, "A"), "DWMms");
    EXPECT_EQ(Kinds(5, ""), "DWMms");
    // An answer without items, or a refused one with items, is none.
    FailingQuotes failing(quotes);
    failing.FailOnCall("bGetTAMonthItemNoByService", 1);
    BKQuoteInterface::SetBKInterface(&failing);
    EXPECT_EQ(Kinds(5, "A"), "mV");
}

TEST_F(HistoryRules, ShownType) {
    const AllowedPeriods all{true, true, true, true, true, false};
    const AllowedPeriods notDaily{false, true, true, true, false, false};
    const AllowedPeriods monthly{false, false, true, true, false, false};
    const AllowedPeriods minutes{false, false, false, true, false, false};
    const AllowedPeriods none;
    struct Case {
        const AllowedPeriods& allowed;
        int wanted, shown;
    };
    for (const Case& c : std::vector<Case>{{all, 0, 0},
                                           {all, 3, 3},
                                           {all, 4, -1},
                                           {all, -1, -1},
                                           {notDaily, 0, 1},
                                           {notDaily, 2, 2},
                                           {monthly, 1, 2},
                                           {minutes, 0, 3},
                                           {minutes, 2, 3},
                                           {none, 0, 0},
                                           {none, 3, 0},
                                           {none, 9, -1}}) {
        EXPECT_EQ(ShownType(c.allowed, c.wanted), c.shown) << c.wanted << ' ' << c.shown;
    }
}

TEST(HistoryValues, Repairs) {
    EXPECT_EQ(Repaired({9, 0, 7, 0, 0}), (Values{9, 5, 1, 1440, 1}));
    EXPECT_EQ(Repaired({-1, -3, -1, -9, -9}), (Values{-1, 5, 1, 1440, 1}));
    const Values good{3, 1000, 0, 5, 99999};
    EXPECT_EQ(Repaired(good), good) << "large values are the dialog's to judge";
}

TEST(HistoryValues, MinutesOfText) {
    for (const auto& [text, minutes] :
         std::vector<std::pair<const char*, int>>{{"0", 1},
                                                  {"", 1},
                                                  {"x", 1},
                                                  {"-5", 1},
                                                  {"1", 1},
                                                  {" 45", 45},
                                                  {"7x", 7},
                                                  {"999", 999},
                                                  {"1000", 999},
                                                  {"99999999999999999999", 999},
                                                  {"-99999999999999999999", 1}}) {
        EXPECT_EQ(MinutesOfText(text), minutes) << text;
    }
}

TEST(HistoryValues, RecordCount) {
    for (const auto& [given, kept] : std::vector<std::pair<long, long>>{
             {49, 50}, {50, 50}, {4000, 4000}, {4001, 4000}, {10, 50}, {-1, 50}}) {
        long count = given;
        EXPECT_EQ(LimitRecordCount(count), given != kept) << given;
        EXPECT_EQ(count, kept) << given;
    }
}

TEST(HistoryValues, StartDate) {
    constexpr long kToday = 20000;
    for (const auto& [day, fault] :
         std::vector<std::pair<long, StartDateFault>>{{0, StartDateFault::TooEarly},
                                                      {1, StartDateFault::None},
                                                      {kToday - 30, StartDateFault::None},
                                                      {kToday - 29, StartDateFault::TooLate},
                                                      {kToday, StartDateFault::TooLate},
                                                      {kToday + 1, StartDateFault::InFuture}}) {
        EXPECT_EQ(CheckStartDate(day, kToday), fault) << day;
    }
    const FixedClock clock(20000L * 86400 - 3600);  // 07:00 of the day on the machine's calendar
    SetClock(&clock);
    EXPECT_EQ(Today(), 20000) << "the local day, not that of UTC";
    SetClock(nullptr);
}

}  // namespace
}  // namespace ta::test
