#include "terminal/quotes/TerminalQuotes.h"

#include "platform/ui/TextBridge.h"

#include <algorithm>
#include <functional>

namespace ta::terminal {
namespace {

using Texts = BKQuoteInterface::Texts;

bool GiveNames(const std::vector<const Symbol*>& symbols, Texts& ids, Texts& names) {
    ids.clear();
    names.clear();
    for (const Symbol* symbol : symbols) {
        ids.push_back(symbol->id);
        names.push_back(NameOf(*symbol));
    }
    return !ids.empty();
}

X1Format ItemOf(const Symbol& symbol, std::uint16_t item) {
    switch (item) {
        case kItemSymbolText:
            return {symbol.id, 0};
        case kItemSymbolName:
            return {NameOf(symbol), 0};
        case kItemSymbolNameRealMonth:
            return {symbol.contractMonth.empty() ? NameOf(symbol)
                                                 : NameOf(symbol) + ' ' + symbol.contractMonth,
                    0};
        case kItemPriceStepCode: {
            const int code = 21 + 2 * DecimalsOfStep(symbol.priceStep);
            return {std::to_string(code), static_cast<double>(code)};
        }
        default:
            return {};
    }
}

}  // namespace

CString TerminalQuotes::LangGetLangString(const CString& key) const {
    return ui::FromQString(qtTrId(key.c_str()));
}

bool TerminalQuotes::bGetQuoteServiceID(std::vector<std::uint8_t>& ids, Texts& names) const {
    ids.clear();
    names.clear();
    for (const Market& market : m_data.Markets()) {
        ids.push_back(market.id);
        names.push_back(NameOf(market));
    }
    return !ids.empty();
}

bool TerminalQuotes::HistoryItems(int period, Items& items, std::uint8_t market,
                                  const CString& code) const {
    items.clear();
    std::vector<const Symbol*> asked;
    if (const Symbol* symbol = m_data.FindSymbol(market, code)) {
        asked.push_back(symbol);
    } else {
        asked = m_data.SymbolsOf(market, code);
    }
    const auto has = [this, period](const Symbol* symbol) {
        return m_data.HasPeriod(symbol->market, symbol->id, period);
    };
    if (std::ranges::any_of(asked, has)) {
        items = {kHistoryOpen, kHistoryHigh, kHistoryLow, kHistoryClose, kHistoryVolume};
    }
    return !items.empty();
}

bool TerminalQuotes::bGetTADailyItemNoByService(Items& items, std::uint8_t market,
                                                const CString& code) const {
    return HistoryItems(kDaily, items, market, code);
}

bool TerminalQuotes::bGetTAWeekItemNoByService(Items& items, std::uint8_t market,
                                               const CString& code) const {
    return HistoryItems(kWeekly, items, market, code);
}

bool TerminalQuotes::bGetTAMonthItemNoByService(Items& items, std::uint8_t market,
                                                const CString& code) const {
    return HistoryItems(kMonthly, items, market, code);
}

bool TerminalQuotes::bGetTA1ItemNoByService(Items& items, std::uint8_t market,
                                            const CString& code) const {
    return HistoryItems(kMinutes, items, market, code);
}

bool TerminalQuotes::bGetTickItemNoByService(Items& items, std::uint8_t market,
                                             const CString& code) const {
    return HistoryItems(kSeconds, items, market, code);
}

bool TerminalQuotes::bIsSupportDividend(std::uint8_t /*market*/, const CString& /*symbol*/) const {
    return false;
}

bool TerminalQuotes::bGetAllCommodityID(Texts& ids, Texts& names, std::uint8_t market) const {
    ids.clear();
    names.clear();
    for (const Commodity* commodity : m_data.CommoditiesOf(market)) {
        ids.push_back(commodity->id);
        names.push_back(NameOf(*commodity));
    }
    return !ids.empty();
}

bool TerminalQuotes::bGetSymbolItemID(Texts& ids, Texts& names, std::uint8_t market,
                                      const CString& commodity) const {
    std::vector<const Symbol*> symbols = m_data.SymbolsOf(market, commodity);
    if (!commodity.empty()) {
        std::erase_if(symbols, std::mem_fn(&Symbol::isWeekly));
    }
    return GiveNames(symbols, ids, names);
}

bool TerminalQuotes::bGetContractMonthByCommodity(Texts& months, std::uint8_t market,
                                                  const CString& commodity) const {
    months.clear();
    for (const Contract* contract : m_data.ContractsOf(market, commodity)) {
        months.push_back(contract->month);
    }
    return !months.empty();
}

int TerminalQuotes::GetWeeklyContractIDByContractMonth(CString& id, std::uint8_t market,
                                                       const CString& commodity,
                                                       const CString& month) const {
    id.clear();
    for (const Contract* contract : m_data.ContractsOf(market, commodity)) {
        if (contract->month == month) {
            id = contract->weeklyId;
        }
    }
    return id.empty() ? 0 : 1;
}

bool TerminalQuotes::bGetSymbolID(Texts& ids, Texts& names, std::uint8_t market,
                                  const CString& contractMonth) const {
    std::vector<const Symbol*> symbols = m_data.SymbolsOf(market);
    std::erase_if(symbols, [&contractMonth](const Symbol* symbol) {
        return contractMonth.empty() || symbol->contractMonth != contractMonth;
    });
    return GiveNames(symbols, ids, names);
}

bool TerminalQuotes::bGetSymbolIDByContractMonthSymbID(CString& symbol,
                                                       const CString& treeId) const {
    symbol.clear();
    for (const Market& market : m_data.Markets()) {
        for (const Symbol* known : m_data.SymbolsOf(market.id)) {
            if (known->id == treeId) {
                symbol = treeId;
                return true;
            }
            const bool isMonth =
                !known->contractMonth.empty() && known->commodity + known->contractMonth == treeId;
            if (isMonth && symbol.empty()) {
                symbol = known->id;
            }
        }
    }
    return !symbol.empty();
}

bool TerminalQuotes::bGetItemDataByItemNo(std::uint8_t market, const CString& code,
                                          const Items& items, std::vector<X1Format>& values,
                                          bool /*flag*/) const {
    values.clear();
    const Symbol* symbol = m_data.FindSymbol(market, code);
    if (symbol == nullptr) {
        return false;
    }
    for (const std::uint16_t item : items) {
        values.push_back(ItemOf(*symbol, item));
    }
    return true;
}

bool TerminalQuotes::GetJumpPrice(std::uint8_t market, const CString& symbol, double /*price*/,
                                  double& stepUp, double& stepDown) const {
    const Symbol* found = m_data.FindSymbol(market, symbol);
    if (found == nullptr) {
        return false;
    }
    stepUp = stepDown = found->priceStep;
    return true;
}

}  // namespace ta::terminal
