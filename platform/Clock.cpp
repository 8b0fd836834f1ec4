#include "platform/Clock.h"

namespace ta {
namespace {

class MachineClock final : public Clock {
public:
    std::time_t Now() const override { return std::time(nullptr); }
};

const MachineClock g_machineClock;
const Clock* g_clock = &g_machineClock;

}  // namespace

const Clock& CurrentClock() {
    return *g_clock;
}

void SetClock(const Clock* clock) {
    g_clock = clock != nullptr ? clock : &g_machineClock;
}

CalendarDate LocalToday() {
    const std::time_t now = CurrentClock().Now();
    // The calls arrive on the GUI thread alone, so the shared result of localtime is safe.
    const std::tm* local = std::localtime(&now);
    if (local == nullptr) {
        return {};
    }
    return {local->tm_year + 1900, local->tm_mon + 1, local->tm_mday};
}

}  // namespace ta
