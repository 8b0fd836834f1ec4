#pragma once

#include "platform/QuoteInterface.h"
#include "platform/Types.h"

#include <cstdint>

namespace ta::techdata {

/// Where the decimals of a market's prices come from. The families are ours; a market belongs to
/// one when the back-end says that it is of the same service as a market of the list.
///
///     PriceStep    the services of 16 and 2 (shares, whose step depends on the price):
///                  GetJumpPrice, asked for each value
///     ItemNumber   the services of 'm', 'O' and 1 (futures and options, overseas futures,
///                  commodities, with one step a symbol): item 1057, asked once
///     None         every other market, the user's own files among them
enum class StepSource { PriceStep, ItemNumber, None };

/// The display codes of one symbol's values.
class UnitRule {
public:
    /// Asks the back-end what does not depend on the value.
    UnitRule(std::uint8_t market, const CString& symbol);

    /// The code that `value` is shown with, where its column has `code`. -1 and -9 stay. "WT200"
    /// has 12. From k, the decimals of the price step: 10 + k for 0 and above, 20 + k below (NaN
    /// included), but 31 and 41 for one decimal; 1 when item 1057 cannot be had. A market of no
    /// family keeps a code of 0 to 29 and has 1 in the place of others.
    int vSetBaseUnit(double value, int code) const;

private:
    int DecimalsAt(double value) const;

    const BKQuoteInterface& m_quotes;
    std::uint8_t m_market;
    CString m_symbol;
    StepSource m_source = StepSource::None;
    bool m_isWt200;
    bool m_itemFailed = false;
    int m_decimals = 0;  ///< of the item number
};

/// k: the decimals of a price step as "%f" prints it, without trailing zeros: 0.05 has 2, 5 has 0.
int DecimalsOfPriceStep(double step);

}  // namespace ta::techdata
