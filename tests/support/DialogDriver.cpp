#include "tests/support/DialogDriver.h"

#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>

#include <algorithm>

namespace ta::test {
namespace {

void Check(bool condition, const std::string& what) {
    if (!condition) {
        g_onDialogFault(what);
    }
}

}  // namespace

DialogDriver::DialogDriver() {
    Poll();
}

DialogDriver::~DialogDriver() {
    Check(m_actions.empty(), std::to_string(m_actions.size()) + " expected dialogs did not open");
}

void DialogDriver::Poll() {
    QTimer::singleShot(1, &m_polling, [this] { Poll(); });
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog != nullptr && std::ranges::find(m_seen, dialog) == m_seen.end()) {
        m_seen.emplace_back(dialog);
        Answer(*dialog);
    }
}

void DialogDriver::Answer(QWidget& dialog) {
    const QPointer<QWidget> alive(&dialog);
    if (m_actions.empty()) {
        Check(false, "unexpected dialog: " + dialog.windowTitle().toStdString());
    } else {
        const Action action = std::move(m_actions.front());
        m_actions.pop_front();
        Check(QTest::qWaitFor([&] { return QApplication::activeWindow() == &dialog; }),
              "the dialog does not get active");
        action(dialog);
        Check(alive == nullptr || !alive->isVisible(), "the dialog was left open");
    }
    if (alive != nullptr && alive->isVisible()) {
        static_cast<QDialog&>(dialog).done(QDialog::Rejected);
    }
}

}  // namespace ta::test
