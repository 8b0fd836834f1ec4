#pragma once

#include "platform/QuoteInterface.h"
#include "tests/support/CallPlan.h"

#include <map>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

namespace ta::test {

/// A quote back-end in plain fields. What is not there gives the empty answers of the interface; so
/// does a question for markets, items, symbols or contracts that is planned to fail, which leaves
/// its outputs as they were.
class MemoryQuotes : public BKQuoteInterface, public CallPlan {
public:
    struct Listing {
        Texts ids;
        Texts names;
    };
    /// A market and a symbol, commodity or contract month of it.
    using Code = std::pair<std::uint8_t, CString>;

    std::map<CString, CString> language;
    std::vector<std::pair<std::uint8_t, CString>> markets;
    // By code; a code without an entry has its market's (empty code), an empty entry is no data.
    std::map<Code, Items> dailyItems;
    std::map<Code, Items> weekItems;
    std::map<Code, Items> monthItems;
    std::map<Code, Items> minuteItems;
    std::map<Code, Items> tickItems;
    std::set<Code> withDividend;
    std::map<std::uint8_t, Listing> commodities;
    std::map<Code, Listing> symbols;       ///< by commodity
    std::map<Code, Texts> contractMonths;  ///< by commodity
    std::map<Code, Listing> monthSymbols;  ///< by contract month
    /// By market, commodity and month.
    std::map<std::tuple<std::uint8_t, CString, CString>, CString> weeklyContracts;
    std::map<Code, CString> otherNames;  ///< by symbol
    bool symbolIdIsRealMonth = false;
    bool nameShowsRealMonth = false;
    std::map<CString, CString> symbolByTreeId;
    /// The items of a symbol; all asked ones must be there.
    std::map<Code, std::map<std::uint16_t, X1Format>> itemData;
    /// Markets of one service, besides each with itself.
    std::set<std::pair<std::uint8_t, std::uint8_t>> sameService;
    std::map<Code, std::pair<double, double>> priceSteps;  ///< up and down

    CString LangGetLangString(const CString& key) const override {
        Enter("LangGetLangString");
        return language.contains(key) ? language.at(key) : key;
    }
    bool bGetQuoteServiceID(std::vector<std::uint8_t>& ids, Texts& names) const override;
#define TA_TEST_ITEMS(Operation, field)                                                      \
    bool Operation(Items& items, std::uint8_t market, const CString& code) const override {  \
        return Give(#Operation,                                                              \
                    Get(field, {market, field.contains({market, code}) ? code : CString()}), \
                    items);                                                                  \
    }
    TA_TEST_ITEMS(bGetTADailyItemNoByService, dailyItems)
    TA_TEST_ITEMS(bGetTAWeekItemNoByService, weekItems)
    TA_TEST_ITEMS(bGetTAMonthItemNoByService, monthItems)
    TA_TEST_ITEMS(bGetTA1ItemNoByService, minuteItems)
    TA_TEST_ITEMS(bGetTickItemNoByService, tickItems)
#undef TA_TEST_ITEMS
    bool bIsSupportDividend(std::uint8_t market, const CString& symbol) const override {
        return withDividend.contains({market, symbol});
    }
    bool bGetAllCommodityID(Texts& ids, Texts& names, std::uint8_t market) const override {
        return Give("bGetAllCommodityID", Get(commodities, market), ids, names);
    }
    bool bGetSymbolItemID(Texts& ids, Texts& names, std::uint8_t market,
                          const CString& commodity) const override {
        return Give("bGetSymbolItemID", Get(symbols, {market, commodity}), ids, names);
    }
    bool bGetContractMonthByCommodity(Texts& months, std::uint8_t market,
                                      const CString& commodity) const override {
        return Give("bGetContractMonthByCommodity", Get(contractMonths, {market, commodity}),
                    months);
    }
    int GetWeeklyContractIDByContractMonth(CString& id, std::uint8_t market,
                                           const CString& commodity,
                                           const CString& month) const override {
        return Enter("GetWeeklyContractIDByContractMonth") &&
                       Find(weeklyContracts, {market, commodity, month}, id)
                   ? 1
                   : 0;
    }
    bool bGetSymbolID(Texts& ids, Texts& names, std::uint8_t market,
                      const CString& contractMonth) const override {
        return Give("bGetSymbolID", Get(monthSymbols, {market, contractMonth}), ids, names);
    }
    bool bGetSymbolOtherNames(Texts& names, std::uint8_t market, const Texts& ids) const override {
        names.clear();
        for (const CString& id : ids) {
            names.push_back(Get(otherNames, {market, id}));
        }
        return !otherNames.empty();
    }
    bool GetSymbolIDIsRealMonth() const override {
        return symbolIdIsRealMonth;
    }
    bool bGetSymbolIDByContractMonthSymbID(CString& symbol, const CString& treeId) const override {
        return Find(symbolByTreeId, treeId, symbol);
    }
    bool bSymbolNameIsShowRealMonth() const override {
        return nameShowsRealMonth;
    }
    bool bGetItemDataByItemNo(std::uint8_t market, const CString& code, const Items& items,
                              std::vector<X1Format>& values, bool flag) const override;
    bool bIsFromTheSameAuthServiceID(std::uint8_t market, std::uint8_t other) const override {
        return market == other || sameService.contains({market, other}) ||
               sameService.contains({other, market});
    }
    bool GetJumpPrice(std::uint8_t market, const CString& symbol, double, double& stepUp,
                      double& stepDown) const override {
        std::pair<double, double> steps(stepUp, stepDown);
        const bool known = Find(priceSteps, {market, symbol}, steps);
        std::tie(stepUp, stepDown) = steps;
        return known;
    }

private:
    template <class Map>
    static bool Find(const Map& map, const typename Map::key_type& key,
                     typename Map::mapped_type& value) {
        const auto found = map.find(key);
        if (found != map.end()) {
            value = found->second;
        }
        return found != map.end();
    }
    template <class Map>
    static typename Map::mapped_type Get(const Map& map, const typename Map::key_type& key) {
        typename Map::mapped_type value{};
        Find(map, key, value);
        return value;
    }
    template <class Values>
    bool Give(const char* operation, const Values& values, Values& out) const {
        if (!Enter(operation)) {
            return false;
        }
        out = values;
        return !out.empty();
    }
    bool Give(const char* operation, const Listing& listing, Texts& ids, Texts& names) const {
        if (!Enter(operation)) {
            return false;
        }
        ids = listing.ids;
        names = listing.names;
        return !ids.empty();
    }
};

/// A copy of a back-end, its calls counted anew, for a test that plans failures on it.
struct FailingQuotes : MemoryQuotes {
    explicit FailingQuotes(const MemoryQuotes& quotes) : MemoryQuotes(quotes) { Reset(); }
};

}  // namespace ta::test
