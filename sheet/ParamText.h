#pragma once

#include "platform/Study.h"

#include <QString>

#include <optional>

/// Parameter values as the user reads and types them.
namespace ta::sheet {

/// The number that a text says, which full-width digits may; nothing for any other text and for
/// one that is not finite.
std::optional<double> ParseNumber(const QString& text);

/// With at most `decimals` digits after the point and no zeros at the end.
QString FormatNumber(double value, int decimals);

/// "1 ~ 1000"
QString RangeText(const StudyParamInfo& param);

/// Why the parameter cannot have this value: no number, too many decimals, or out of range. Empty
/// when it can.
QString FaultOf(const StudyParamInfo& param, const QString& text);

}  // namespace ta::sheet
