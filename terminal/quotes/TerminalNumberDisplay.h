#pragma once

#include "platform/NumberDisplay.h"

namespace ta::terminal {

/// How the terminal writes numbers. No thousands separators, so that texts can stand in a CSV
/// file; "N/A" for what is infinite; never "-0".
///
/// Fraction codes: 1 halves, 2 quarters, 3 eighths, 4 16ths, 5 32nds, 6 64ths, 7 128ths,
/// 8 256ths; any other code gives "N/A". The value is rounded to the nearest fraction.
class TerminalNumberDisplay : public ta::NumberDisplay {
public:
    /// Codes as in NumberDisplay; -1 and unknown codes give up to 6 decimals without trailing
    /// zeros.
    CString CApi_DisplayDouble(double value, int code) const override;

    /// Whole and fraction in the denominator of the code: 112.5 in 32nds is "112 16/32".
    CString CApi_DisplayDenominator(double value, unsigned char fractionCode) const override;
    /// Whole, point, numerator in as many digits as the largest has: "112.16".
    CString CApi_DisplayFraction2Dot(double value, unsigned char fractionCode) const override;
    /// Whole, apostrophe, numerator: "112'16". From 64ths on as bond futures are quoted: 32nds and
    /// one more digit, tenths of a 32nd cut off, so that 5.25 of 32 is "112'052".
    CString CApi_DisplayFraction2SpecialDecimail(double value,
                                                 unsigned char fractionCode) const override;
    /// A mixed number in lowest terms: "112 1/2".
    CString CApi_DisplayFraction2MixType(double value, unsigned char fractionCode) const override;
};

}  // namespace ta::terminal
