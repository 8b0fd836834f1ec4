#include "platform/ui/Timers.h"

#include <QTimer>

namespace ta::ui {
namespace {

class RealTimers final : public Timers {
public:
    void Start(QObject& owner, int id, int milliseconds, std::function<void()> tick) override {
        Stop(owner, id);
        auto* timer = new QTimer(&owner);
        timer->setObjectName(NameOf(id));
        QObject::connect(timer, &QTimer::timeout, &owner, std::move(tick));
        timer->start(milliseconds);
    }

    void Stop(QObject& owner, int id) override {
        if (auto* timer = owner.findChild<QTimer*>(NameOf(id), Qt::FindDirectChildrenOnly)) {
            timer->stop();
            timer->setObjectName(QString());
            timer->deleteLater();
        }
    }

private:
    static QString NameOf(int id) { return QString("timer%1").arg(id); }
};

RealTimers g_realTimers;
Timers* g_timers = &g_realTimers;

}  // namespace

Timers& CurrentTimers() {
    return *g_timers;
}

void SetTimers(Timers* timers) {
    g_timers = timers != nullptr ? timers : &g_realTimers;
}

}  // namespace ta::ui
