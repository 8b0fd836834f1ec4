#pragma once

#include "platform/ui/Timers.h"

#include <QPointer>

#include <map>

namespace ta::test {

/// Timers that tick when a test says so. While one lives, it is the timers in use.
class ManualTimers final : public ui::Timers {
public:
    ManualTimers() { ui::SetTimers(this); }
    ~ManualTimers() override { ui::SetTimers(nullptr); }

    void Start(QObject& owner, int id, int milliseconds, std::function<void()> tick) override {
        m_running[id] = {&owner, milliseconds, std::move(tick)};
    }
    void Stop(QObject&, int id) override { m_running.erase(id); }

    /// Milliseconds; 0 when the timer does not run.
    int Period(int id) const {
        const auto found = m_running.find(id);
        return found == m_running.end() || found->second.owner == nullptr ? 0
                                                                          : found->second.period;
    }
    /// `count` ticks, or fewer when the timer is stopped.
    void Tick(int id, int count = 1) {
        for (int i = 0; i < count && Period(id) > 0; ++i) {
            const auto tick = m_running[id].tick;
            tick();
        }
    }

private:
    struct Running {
        QPointer<QObject> owner;
        int period = 0;
        std::function<void()> tick;
    };

    std::map<int, Running> m_running;
};

}  // namespace ta::test
