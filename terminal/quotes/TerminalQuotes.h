#pragma once

#include "platform/QuoteInterface.h"
#include "platform/Rounding.h"
#include "terminal/quotes/MarketData.h"

namespace ta::terminal {

/// The quote back-end that the terminal hangs into the library: everything is answered from
/// MarketData. Names are in the language in use at the call.
class TerminalQuotes : public BKQuoteInterface {
public:
    /// `data` stays the caller's and outlives this.
    explicit TerminalQuotes(const MarketData& data) : m_data(data) {}

    CString LangGetLangString(const CString& key) const override;

    bool bGetQuoteServiceID(std::vector<std::uint8_t>& ids, Texts& names) const override;

    // The items are ta::terminal::HistoryItem numbers. `code` is a symbol's id, or else a
    // commodity's, which has what any of its symbols has; empty asks for the market likewise.
    bool bGetTADailyItemNoByService(Items& items, std::uint8_t market,
                                    const CString& code) const override;
    bool bGetTAWeekItemNoByService(Items& items, std::uint8_t market,
                                   const CString& code) const override;
    bool bGetTAMonthItemNoByService(Items& items, std::uint8_t market,
                                    const CString& code) const override;
    bool bGetTA1ItemNoByService(Items& items, std::uint8_t market,
                                const CString& code) const override;
    bool bGetTickItemNoByService(Items& items, std::uint8_t market,
                                 const CString& code) const override;
    /// false: no prices here are adjusted for dividends.
    bool bIsSupportDividend(std::uint8_t market, const CString& symbol) const override;

    bool bGetAllCommodityID(Texts& ids, Texts& names, std::uint8_t market) const override;
    /// The symbols of a commodity without those of its weekly contracts, which bGetSymbolID gives;
    /// all symbols of the market for an empty commodity.
    bool bGetSymbolItemID(Texts& ids, Texts& names, std::uint8_t market,
                          const CString& commodity) const override;
    bool bGetContractMonthByCommodity(Texts& months, std::uint8_t market,
                                      const CString& commodity) const override;
    int GetWeeklyContractIDByContractMonth(CString& id, std::uint8_t market,
                                           const CString& commodity,
                                           const CString& month) const override;
    bool bGetSymbolID(Texts& ids, Texts& names, std::uint8_t market,
                      const CString& contractMonth) const override;
    /// false: trees carry the symbols' own ids.
    bool GetSymbolIDIsRealMonth() const override { return false; }
    /// A real-month id is the commodity followed by the contract month ("SXF202005"); it stands for
    /// the first symbol of that month. A symbol's own id stands for itself.
    bool bGetSymbolIDByContractMonthSymbID(CString& symbol, const CString& treeId) const override;
    bool bSymbolNameIsShowRealMonth() const override { return true; }

    /// Items 1018 symbol id, 1019 name, 2020 name with the contract month, 1057 price-step code
    /// (21 + 2 × decimals of the step); an item of another number is empty. false for an unknown
    /// symbol. `flag` makes no difference.
    bool bGetItemDataByItemNo(std::uint8_t market, const CString& code, const Items& items,
                              std::vector<X1Format>& values, bool flag) const override;
    /// Each market is a service of its own.
    bool bIsFromTheSameAuthServiceID(std::uint8_t market, std::uint8_t other) const override {
        return market == other;
    }
    /// One step for all prices of a symbol.
    bool GetJumpPrice(std::uint8_t market, const CString& symbol, double price, double& stepUp,
                      double& stepDown) const override;

private:
    bool HistoryItems(int period, Items& items, std::uint8_t market, const CString& code) const;

    const MarketData& m_data;
};

/// The values that a bar of history has.
enum HistoryItem : std::uint16_t {
    kHistoryOpen = 3001,
    kHistoryHigh = 3002,
    kHistoryLow = 3003,
    kHistoryClose = 3004,
    kHistoryVolume = 3005,
};

}  // namespace ta::terminal
