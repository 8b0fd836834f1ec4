#pragma once

#include "platform/Clock.h"
#include "platform/Entitlement.h"
#include "platform/NumberDisplay.h"
#include "tests/support/CallPlan.h"

#include <fmt/format.h>

#include <set>

namespace ta::test {

class FixedClock : public Clock {
public:
    explicit FixedClock(std::time_t seconds = 0) : now(seconds) {}

    std::time_t now;

    std::time_t Now() const override { return now; }
};

/// Allows everything that a test does not deny.
class MemoryEntitlement : public EntitlementService {
public:
    std::set<Function> denied;
    std::set<unsigned char> marketsWithoutSeconds;
    int maxLinesInAll = -1;
    int maxLinesPerSymbol = -1;

    bool bIsFunctionAllowed(Function function) const override { return !denied.contains(function); }
    bool bIsSecondDataAllowed(unsigned char market) const override {
        return !marketsWithoutSeconds.contains(market);
    }
    void GetTATrendLineMaxCount(int& inAll, int& perSymbol) const override {
        inAll = maxLinesInAll;
        perSymbol = maxLinesPerSymbol;
    }
};

/// Writes what it was asked: "CApi_DisplayDouble(1.5, 12)"; a call that is planned to fail gives
/// "N/A".
class MemoryNumberDisplay : public NumberDisplay, public CallPlan {
public:
#define TA_TEST_SHOW(Operation, Code)                                                       \
    CString Operation(double value, Code code) const override {                             \
        return Enter(#Operation) ? fmt::format(#Operation "({}, {})", value, code) : "N/A"; \
    }
    TA_TEST_SHOW(CApi_DisplayDouble, int)
    TA_TEST_SHOW(CApi_DisplayDenominator, unsigned char)
    TA_TEST_SHOW(CApi_DisplayFraction2Dot, unsigned char)
    TA_TEST_SHOW(CApi_DisplayFraction2SpecialDecimail, unsigned char)
    TA_TEST_SHOW(CApi_DisplayFraction2MixType, unsigned char)
#undef TA_TEST_SHOW
};

/// A copy for a test that plans failures on it.
using FailingNumberDisplay = MemoryNumberDisplay;

}  // namespace ta::test
