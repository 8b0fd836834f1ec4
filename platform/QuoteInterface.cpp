#include "platform/QuoteInterface.h"

namespace {

class EmptyBackEnd final : public BKQuoteInterface {
public:
    CString LangGetLangString(const CString& key) const override { return key; }
    bool bGetQuoteServiceID(std::vector<std::uint8_t>& ids, Texts& names) const override {
        return Nothing(ids, names);
    }
    bool bGetTADailyItemNoByService(Items& items, std::uint8_t, const CString&) const override {
        return Nothing(items);
    }
    bool bGetTAWeekItemNoByService(Items& items, std::uint8_t, const CString&) const override {
        return Nothing(items);
    }
    bool bGetTAMonthItemNoByService(Items& items, std::uint8_t, const CString&) const override {
        return Nothing(items);
    }
    bool bGetTA1ItemNoByService(Items& items, std::uint8_t, const CString&) const override {
        return Nothing(items);
    }
    bool bGetTickItemNoByService(Items& items, std::uint8_t, const CString&) const override {
        return Nothing(items);
    }
    bool bIsSupportDividend(std::uint8_t, const CString&) const override { return false; }
    bool bGetAllCommodityID(Texts& ids, Texts& names, std::uint8_t) const override {
        return Nothing(ids, names);
    }
    bool bGetSymbolItemID(Texts& ids, Texts& names, std::uint8_t, const CString&) const override {
        return Nothing(ids, names);
    }
    bool bGetContractMonthByCommodity(Texts& months, std::uint8_t, const CString&) const override {
        return Nothing(months);
    }
    int GetWeeklyContractIDByContractMonth(CString&, std::uint8_t, const CString&,
                                           const CString&) const override {
        return 0;
    }
    bool bGetSymbolID(Texts& ids, Texts& names, std::uint8_t, const CString&) const override {
        return Nothing(ids, names);
    }
    bool GetSymbolIDIsRealMonth() const override { return false; }
    bool bGetSymbolIDByContractMonthSymbID(CString&, const CString&) const override {
        return false;
    }
    bool bSymbolNameIsShowRealMonth() const override { return false; }
    bool bGetItemDataByItemNo(std::uint8_t, const CString&, const Items&,
                              std::vector<X1Format>& values, bool) const override {
        return Nothing(values);
    }
    bool bIsFromTheSameAuthServiceID(std::uint8_t, std::uint8_t) const override { return false; }
    bool GetJumpPrice(std::uint8_t, const CString&, double, double&, double&) const override {
        return false;
    }

private:
    template <class... Lists>
    static bool Nothing(Lists&... lists) {
        (lists.clear(), ...);
        return false;
    }
};

EmptyBackEnd g_emptyBackEnd;
BKQuoteInterface* g_backEnd = &g_emptyBackEnd;

}  // namespace

BKQuoteInterface& BKQuoteInterface::GetBKInterface() {
    return *g_backEnd;
}

void BKQuoteInterface::SetBKInterface(BKQuoteInterface* backEnd) {
    g_backEnd = backEnd != nullptr ? backEnd : &g_emptyBackEnd;
}
