#pragma once

#include "platform/QuoteInterface.h"
#include "tests/support/CallPlan.h"

#include <map>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

namespace ta::test {

/// A quote back-end in plain fields. What is not there gives the empty answers of the interface.
class MemoryQuotes : public BKQuoteInterface {
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
        return language.contains(key) ? language.at(key) : key;
    }
    bool bGetQuoteServiceID(std::vector<std::uint8_t>& ids, Texts& names) const override;
#define TA_TEST_ITEMS(Operation, field)                                                     \
    bool Operation(Items& items, std::uint8_t market, const CString& code) const override { \
        items = Get(field, {market, field.contains({market, code}) ? code : CString()});    \
        return !items.empty();                                                              \
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
        return Give(Get(commodities, market), ids, names);
    }
    bool bGetSymbolItemID(Texts& ids, Texts& names, std::uint8_t market,
                          const CString& commodity) const override {
        return Give(Get(symbols, {market, commodity}), ids, names);
    }
    bool bGetContractMonthByCommodity(Texts& months, std::uint8_t market,
                                      const CString& commodity) const override {
        months = Get(contractMonths, {market, commodity});
        return !months.empty();
    }
    int GetWeeklyContractIDByContractMonth(CString& id, std::uint8_t market,
                                           const CString& commodity,
                                           const CString& month) const override {
        return Find(weeklyContracts, {market, commodity, month}, id) ? 1 : 0;
    }
    bool bGetSymbolID(Texts& ids, Texts& names, std::uint8_t market,
                      const CString& contractMonth) const override {
        return Give(Get(monthSymbols, {market, contractMonth}), ids, names);
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
    static bool Give(const Listing& listing, Texts& ids, Texts& names) {
        ids = listing.ids;
        names = listing.names;
        return !ids.empty();
    }
};

/// Passes on. A call that is planned to fail gives false or 0 and leaves its outputs as they were;
/// a language key gives itself.
class FailingQuotes : public BKQuoteInterface, public CallPlan {
public:
    /// `target` outlives this.
    explicit FailingQuotes(BKQuoteInterface& target) : m_target(target) {}

    CString LangGetLangString(const CString& key) const override {
        return Enter("LangGetLangString") ? m_target.LangGetLangString(key) : key;
    }

#define TA_TEST_FORWARD(Result, Operation, parameters, ...)                    \
    Result Operation parameters const override {                               \
        return Enter(#Operation) ? m_target.Operation(__VA_ARGS__) : Result(); \
    }
    TA_TEST_FORWARD(bool, bGetQuoteServiceID, (std::vector<std::uint8_t> & i, Texts& n), i, n)
    TA_TEST_FORWARD(bool, bGetTADailyItemNoByService, (Items & i, std::uint8_t m, const CString& c),
                    i, m, c)
    TA_TEST_FORWARD(bool, bGetTAWeekItemNoByService, (Items & i, std::uint8_t m, const CString& c),
                    i, m, c)
    TA_TEST_FORWARD(bool, bGetTAMonthItemNoByService, (Items & i, std::uint8_t m, const CString& c),
                    i, m, c)
    TA_TEST_FORWARD(bool, bGetTA1ItemNoByService, (Items & i, std::uint8_t m, const CString& c), i,
                    m, c)
    TA_TEST_FORWARD(bool, bGetTickItemNoByService, (Items & i, std::uint8_t m, const CString& c), i,
                    m, c)
    TA_TEST_FORWARD(bool, bIsSupportDividend, (std::uint8_t m, const CString& s), m, s)
    TA_TEST_FORWARD(bool, bGetAllCommodityID, (Texts & i, Texts& n, std::uint8_t m), i, n, m)
    TA_TEST_FORWARD(bool, bGetSymbolItemID, (Texts & i, Texts& n, std::uint8_t m, const CString& c),
                    i, n, m, c)
    TA_TEST_FORWARD(bool, bGetContractMonthByCommodity,
                    (Texts & t, std::uint8_t m, const CString& c), t, m, c)
    TA_TEST_FORWARD(int, GetWeeklyContractIDByContractMonth,
                    (CString & i, std::uint8_t m, const CString& c, const CString& t), i, m, c, t)
    TA_TEST_FORWARD(bool, bGetSymbolID, (Texts & i, Texts& n, std::uint8_t m, const CString& c), i,
                    n, m, c)
    TA_TEST_FORWARD(bool, bGetSymbolOtherNames, (Texts & n, std::uint8_t m, const Texts& i), n, m,
                    i)
    TA_TEST_FORWARD(bool, GetSymbolIDIsRealMonth, ())
    TA_TEST_FORWARD(bool, bGetSymbolIDByContractMonthSymbID, (CString & s, const CString& t), s, t)
    TA_TEST_FORWARD(bool, bSymbolNameIsShowRealMonth, ())
    TA_TEST_FORWARD(bool, bGetItemDataByItemNo,
                    (std::uint8_t m, const CString& c, const Items& i, std::vector<X1Format>& v,
                     bool f),
                    m, c, i, v, f)
    TA_TEST_FORWARD(bool, bIsFromTheSameAuthServiceID, (std::uint8_t m, std::uint8_t o), m, o)
    TA_TEST_FORWARD(bool, GetJumpPrice,
                    (std::uint8_t m, const CString& s, double p, double& u, double& d), m, s, p, u,
                    d)
#undef TA_TEST_FORWARD

private:
    BKQuoteInterface& m_target;
};

}  // namespace ta::test
