#pragma once

#include "platform/Export.h"

/// The numbers of the messages that registered chart views get; both carry lParam 0.
namespace ta {

/// "MXMSG_TAGROUP_CHANGE": the settings of the group at index wParam changed.
TADIALOGS_EXPORT extern const unsigned kGroupChangeMessage;
/// "MXMSG_TATRENDLINE_CHANGE": the trend lines changed; wParam is 0.
TADIALOGS_EXPORT extern const unsigned kTrendLineChangeMessage;

}  // namespace ta
