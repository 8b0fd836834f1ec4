#include "platform/ui/ModelessDialog.h"

#include "platform/ui/Timers.h"

#include <QCoreApplication>

namespace ta::ui {
namespace {

void DeliverFromEventLoop() {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [] { window::DeliverPostedMessage(); }, Qt::QueuedConnection);
}

}  // namespace

ModelessDialog::ModelessDialog(CWnd* owner, QWidget* parent) : DialogBase(parent), m_owner(owner) {
    [[maybe_unused]] static const bool installed =
        (window::SetPostHook(&DeliverFromEventLoop), true);
}

void ModelessDialog::OnOK() {}

void ModelessDialog::OnCancel() {}

void ModelessDialog::OnTimer(int) {}

void ModelessDialog::PostToOwner(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    if (m_owner != nullptr) {
        window::PostMessageA(*m_owner, message, wParam, lParam);
    }
}

void ModelessDialog::SetTimer(int id, int milliseconds) {
    CurrentTimers().Start(*this, id, milliseconds,
                          [this, id] { Guard([this, id] { OnTimer(id); }); });
}

void ModelessDialog::KillTimer(int id) {
    CurrentTimers().Stop(*this, id);
}

}  // namespace ta::ui
