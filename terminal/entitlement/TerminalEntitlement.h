#pragma once

#include "platform/Entitlement.h"

#include <QString>

#include <set>

namespace ta::terminal {

/// What this user's contract allows, from the section "entitlement" of an INI file:
///
///     [entitlement]
///     taGroups=true            ; also taGroupEditing, advancedStudies, secondData
///     trendLinesInAll=1000     ; negative: no limit
///     trendLinesPerSymbol=50
///
/// Without the file or a key: everything is allowed, with the limits above.
class TerminalEntitlement final : public EntitlementService {
public:
    /// Reads `iniFile` once; an empty name reads nothing.
    explicit TerminalEntitlement(const QString& iniFile = {});

    bool bIsFunctionAllowed(Function function) const override;
    bool bIsSecondDataAllowed(unsigned char market) const override;
    void GetTATrendLineMaxCount(int& inAll, int& perSymbol) const override;

private:
    std::set<Function> m_denied;
    int m_trendLinesInAll = 1000;
    int m_trendLinesPerSymbol = 50;
};

}  // namespace ta::terminal
