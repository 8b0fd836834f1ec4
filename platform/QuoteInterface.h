#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <cstdint>
#include <vector>

/// The value of one item of a symbol.
struct X1Format {
    CString text;
    double number = 0;
};

/// The quote back-end: markets, symbols, which history there is, and the language strings. The
/// terminal implements it and hangs it in with SetBKInterface.
///
/// Operations with lists replace their outputs and return false when there is nothing to give. Two
/// lists of one operation are of one length: the i-th name is the name of the i-th id. Markets are
/// service numbers of one byte; ids and codes are never shown, names are. Nothing may throw, and
/// all calls come on the GUI thread.
class TADIALOGS_EXPORT BKQuoteInterface {
public:
    using Texts = std::vector<CString>;
    using Items = std::vector<std::uint16_t>;

    virtual ~BKQuoteInterface() = default;

    /// The back-end in use; before one is set, one that knows no market and gives each language
    /// key as its own text.
    static BKQuoteInterface& GetBKInterface();
    /// Null brings the empty back-end back. The caller keeps ownership.
    static void SetBKInterface(BKQuoteInterface* backEnd);

    /// The text of a language key, in the language in use at the call; a key without a text gives
    /// itself.
    virtual CString LangGetLangString(const CString& key) const = 0;

    /// All markets in display order.
    virtual bool bGetQuoteServiceID(std::vector<std::uint8_t>& ids, Texts& names) const = 0;

    // The item numbers of a kind of history that a market (empty code) or a symbol or commodity of
    // it has.
    virtual bool bGetTADailyItemNoByService(Items& items, std::uint8_t market,
                                            const CString& code) const = 0;
    virtual bool bGetTAWeekItemNoByService(Items& items, std::uint8_t market,
                                           const CString& code) const = 0;
    virtual bool bGetTAMonthItemNoByService(Items& items, std::uint8_t market,
                                            const CString& code) const = 0;
    virtual bool bGetTA1ItemNoByService(Items& items, std::uint8_t market,
                                        const CString& code) const = 0;
    virtual bool bGetTickItemNoByService(Items& items, std::uint8_t market,
                                         const CString& code) const = 0;
    /// Whether the symbol's prices can be shown adjusted for dividends.
    virtual bool bIsSupportDividend(std::uint8_t market, const CString& symbol) const = 0;

    /// The commodities of a market of futures or options.
    virtual bool bGetAllCommodityID(Texts& ids, Texts& names, std::uint8_t market) const = 0;
    /// The symbols of a commodity, or of the whole market for an empty commodity.
    virtual bool bGetSymbolItemID(Texts& ids, Texts& names, std::uint8_t market,
                                  const CString& commodity) const = 0;
    /// The contract months of a commodity, the nearest first, as the back-end writes them.
    virtual bool bGetContractMonthByCommodity(Texts& months, std::uint8_t market,
                                              const CString& commodity) const = 0;
    /// Non-zero when the month has a weekly contract, whose id goes to `id`.
    virtual int GetWeeklyContractIDByContractMonth(CString& id, std::uint8_t market,
                                                   const CString& commodity,
                                                   const CString& month) const = 0;
    /// The symbols of one contract month.
    virtual bool bGetSymbolID(Texts& ids, Texts& names, std::uint8_t market,
                              const CString& contractMonth) const = 0;
    /// What else a search may find symbols by, such as their names in every language: one text for
    /// each of `ids`, empty for none. The base knows nothing.
    virtual bool bGetSymbolOtherNames(Texts& names, std::uint8_t /*market*/,
                                      const Texts& /*ids*/) const {
        names.clear();
        return false;
    }
    /// Whether symbol trees carry real-month ids, which the next operation turns into symbol ids.
    virtual bool GetSymbolIDIsRealMonth() const = 0;
    virtual bool bGetSymbolIDByContractMonthSymbID(CString& symbol,
                                                   const CString& treeId) const = 0;
    /// Whether names of futures are shown with their real month (item 2020 instead of 1019).
    virtual bool bSymbolNameIsShowRealMonth() const = 0;

    /// The values of the asked items, in the order asked; false, and no values, unless all are
    /// there. `flag` is handed on as the caller got it.
    virtual bool bGetItemDataByItemNo(std::uint8_t market, const CString& code, const Items& items,
                                      std::vector<X1Format>& values, bool flag) const = 0;
    /// Whether two markets are of one entitlement, as each is with itself.
    virtual bool bIsFromTheSameAuthServiceID(std::uint8_t market, std::uint8_t other) const = 0;
    /// The price step of a symbol at a price; outputs keep their presets when it is not known.
    virtual bool GetJumpPrice(std::uint8_t market, const CString& symbol, double price,
                              double& stepUp, double& stepDown) const = 0;
};

namespace ta {

/// Item numbers that the library asks by.
enum ItemNumber : std::uint16_t {
    kItemSymbolText = 1018,           ///< the symbol as users type it
    kItemSymbolName = 1019,           ///< its name
    kItemPriceStepCode = 1057,        ///< how its prices are written; see NumberDisplay
    kItemSymbolNameRealMonth = 2020,  ///< its name with the real contract month
};

}  // namespace ta
