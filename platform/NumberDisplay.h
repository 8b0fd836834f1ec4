#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

namespace ta {

/// How the terminal writes numbers. It implements this and hangs it into CSyncInfo.
class TADIALOGS_EXPORT NumberDisplay {
public:
    virtual ~NumberDisplay() = default;

    /// `code` says how: 10 + k or 20 + k (31 or 41 for k = 1) is k decimals, 0 to 9 that many,
    /// -1 as few decimals as the value needs, -9 two. An empty text for NaN.
    virtual CString CApi_DisplayDouble(double value, int code) const = 0;

    // A price in parts of a whole (halves to 256ths), in four notations, of which
    // Services::fractionType says the one in use. `fractionCode` is the symbol's price-step item.
    // "N/A" when it names no denominator. The results are texts of the user's code page, without
    // blanks around them.
    virtual CString CApi_DisplayDenominator(double value, unsigned char fractionCode) const = 0;
    virtual CString CApi_DisplayFraction2Dot(double value, unsigned char fractionCode) const = 0;
    virtual CString CApi_DisplayFraction2SpecialDecimail(double value,
                                                         unsigned char fractionCode) const = 0;
    virtual CString CApi_DisplayFraction2MixType(double value,
                                                 unsigned char fractionCode) const = 0;
};

}  // namespace ta
