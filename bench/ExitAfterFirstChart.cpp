// Linked into a program, it ends the program once its first chart with candles is on the screen.

#include <qcustomplot.h>
#include <QCoreApplication>
#include <QTimer>

#include <cstdlib>

namespace {

bool HasCandles(QCustomPlot& plot) {
    for (int i = 0; i < plot.plottableCount(); ++i) {
        const auto* candles = qobject_cast<const QCPFinancial*>(plot.plottable(i));
        if (candles != nullptr && candles->dataCount() > 0) {
            return true;
        }
    }
    return false;
}

class PaintWatch : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            auto* plot = qobject_cast<QCustomPlot*>(watched);
            if (plot != nullptr && HasCandles(*plot)) {
                // After this event and what is painted with it.
                QTimer::singleShot(0, [] { std::_Exit(0); });
            }
        }
        return false;
    }
};

void Watch() {
    static PaintWatch watch;
    QCoreApplication::instance()->installEventFilter(&watch);
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(Watch)
