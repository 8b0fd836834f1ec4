#include "terminal/frame/Frame.h"

#include <QMainWindow>
#include <QStatusBar>

namespace ta::terminal {

void Frame::Notice(const QString& text) const {
    constexpr int kMilliseconds = 10000;
    window.statusBar()->showMessage(text, kMilliseconds);
}

}  // namespace ta::terminal
