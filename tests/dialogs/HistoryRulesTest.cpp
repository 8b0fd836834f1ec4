// The rules of the history dialog that need no window.

#include "dialogs/HistoryRules.h"
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

TEST(HistoryValues, MinutesOfText) {
    for (const auto& [text, minutes] :
         std::vector<std::pair<const char*, int>>{{"0", 1},
                                                  {"", 1},
                                                  {" 45", 45},
                                                  {"7x", 7},
                                                  {"1000", 999},
                                                  {"99999999999999999999", 999},
                                                  {"-99999999999999999999", 1}}) {
        EXPECT_EQ(MinutesOfText(text), minutes) << text;
    }
}

}  // namespace
}  // namespace ta::test
