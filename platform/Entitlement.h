#pragma once

#include "platform/Export.h"

namespace ta {

/// What a user's contract can allow.
enum class Function {
    TaGroups,         ///< indicator groups of the user's own, beside the default group
    TaGroupEditing,   ///< editing groups in the settings sheet
    AdvancedStudies,  ///< studies beyond those of the default group
    SecondData,       ///< bars shorter than a minute
};

/// The entitlement service. The terminal implements it and hangs it into CSyncInfo; without one
/// everything is allowed.
class TADIALOGS_EXPORT EntitlementService {
public:
    virtual ~EntitlementService() = default;

    virtual bool bIsFunctionAllowed(Function function) const = 0;
    /// Whether the user may see second data of a market.
    virtual bool bIsSecondDataAllowed(unsigned char market) const = 0;
    /// The most trend lines that the user may keep: in all, and on one symbol. Negative: no limit.
    virtual void GetTATrendLineMaxCount(int& inAll, int& perSymbol) const = 0;
};

}  // namespace ta
