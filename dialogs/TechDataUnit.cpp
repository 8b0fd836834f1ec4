#include "dialogs/TechDataUnit.h"

#include "platform/NumberText.h"

#include <cmath>

namespace ta::techdata {
namespace {

constexpr int kAsFewDecimals = -1;
constexpr int kAsFewDecimalsToo = -9;
constexpr int kWt200Code = 12;
constexpr int kPlainCode = 1;

struct Family {
    std::uint8_t market;
    StepSource source;
};

constexpr Family kFamilies[] = {
    {16, StepSource::PriceStep},   {2, StepSource::PriceStep},  {'m', StepSource::ItemNumber},
    {'O', StepSource::ItemNumber}, {1, StepSource::ItemNumber},
};

StepSource SourceOf(const BKQuoteInterface& quotes, std::uint8_t market) {
    for (const Family& family : kFamilies) {
        if (quotes.bIsFromTheSameAuthServiceID(market, family.market)) {
            return family.source;
        }
    }
    return StepSource::None;
}

/// The item's number as an unsigned byte.
int StepCodeOf(const X1Format& item) {
    const bool isByte = item.number >= 0 && item.number < 256;
    return isByte ? static_cast<int>(item.number) : 0;
}

}  // namespace

int DecimalsOfPriceStep(double step) {
    CString text;
    AppendFixed(text, step, 6);
    const std::size_t point = text.find('.');
    return point == CString::npos ? 0 : static_cast<int>(text.find_last_not_of('0') - point);
}

UnitRule::UnitRule(std::uint8_t market, const CString& symbol)
    : m_quotes(BKQuoteInterface::GetBKInterface()),
      m_market(market),
      m_symbol(symbol),
      m_source(SourceOf(m_quotes, market)),
      m_isWt200(symbol == "WT200") {
    if (m_source == StepSource::ItemNumber) {
        std::vector<X1Format> values;
        m_itemFailed =
            !m_quotes.bGetItemDataByItemNo(market, symbol, {kItemPriceStepCode}, values, true) ||
            values.empty();
        m_decimals = m_itemFailed ? 0 : (StepCodeOf(values.front()) - 21) / 2;
    }
}

int UnitRule::DecimalsAt(double value) const {
    if (m_source == StepSource::ItemNumber) {
        return m_decimals;
    }
    double up = 0.01;
    double down = 0.01;
    m_quotes.GetJumpPrice(m_market, m_symbol, std::abs(value), up, down);
    return DecimalsOfPriceStep(up);
}

int UnitRule::vSetBaseUnit(double value, int code) const {
    if (code == kAsFewDecimals || code == kAsFewDecimalsToo) {
        return code;
    }
    if (m_isWt200) {
        return kWt200Code;
    }
    if (m_source == StepSource::None) {
        return code >= 0 && code <= 29 ? code : kPlainCode;
    }
    if (m_itemFailed) {
        return kPlainCode;
    }
    const int decimals = DecimalsAt(value);
    if (value >= 0) {
        return decimals == 1 ? 31 : 10 + decimals;
    }
    return decimals == 1 ? 41 : 20 + decimals;
}

}  // namespace ta::techdata
