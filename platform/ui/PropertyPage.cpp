#include "platform/ui/PropertyPage.h"

#include "platform/ui/PropertySheet.h"

#include <QKeyEvent>

namespace ta::ui {

PropertyPage::PropertyPage() {
    setWindowFlags(Qt::Widget);
}

PropertySheet* PropertyPage::GetSheet() const {
    for (QWidget* widget = parentWidget(); widget != nullptr; widget = widget->parentWidget()) {
        if (auto* sheet = qobject_cast<PropertySheet*>(widget)) {
            return sheet;
        }
    }
    return nullptr;
}

void PropertyPage::OnSetActive() {}

bool PropertyPage::OnKillActive() {
    return true;
}

bool PropertyPage::CanSave() {
    return true;
}

void PropertyPage::setVisible(bool visible) {
    const bool startsAlone = visible && GetSheet() == nullptr && !IsCreated();
    if (startsAlone) {
        Create();
    }
    // Not as a dialog, which would find itself a place and a focus.
    QWidget::setVisible(visible);  // NOLINT(bugprone-parent-virtual-call)
    if (startsAlone) {
        Guard([this] { OnSetActive(); });
    }
}

void PropertyPage::OnCancel() {}

void PropertyPage::OnOK() {}

void PropertyPage::keyPressEvent(QKeyEvent* event) {
    if (!PressFocusedButton(*event)) {
        QWidget::keyPressEvent(event);  // NOLINT(bugprone-parent-virtual-call)
    }
}

}  // namespace ta::ui
