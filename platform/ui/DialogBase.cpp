#include "platform/ui/DialogBase.h"

#include "platform/FormatText.h"
#include "platform/QuoteInterface.h"
#include "platform/SyncInfo.h"
#include "platform/ui/TextBridge.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QScreen>

#include <algorithm>

namespace ta::ui {
namespace {

// The font for which the forms' sizes are drawn.
constexpr qreal kFormPointSize = 10;

/// The text of a key; any other text as it is.
QString Translated(const QString& text) {
    const bool isKey = text.startsWith("IDS_") || text.startsWith("IDC_");
    return isKey ? LangText(text.toStdString()) : text;
}

void TranslateControl(QWidget& control) {
    if (auto* button = qobject_cast<QAbstractButton*>(&control)) {
        button->setText(Translated(button->text()));
    } else if (auto* label = qobject_cast<QLabel*>(&control)) {
        label->setText(Translated(label->text()));
    } else if (auto* frame = qobject_cast<QGroupBox*>(&control)) {
        frame->setTitle(Translated(frame->title()));
    }
    control.setToolTip(Translated(control.toolTip()));
    control.setAccessibleName(Translated(control.accessibleName()));
}

}  // namespace

QString LangText(const CString& key) {
    const CString text = BKQuoteInterface::GetBKInterface().LangGetLangString(key);
    return ToQString(text::Format("%s", text));
}

DialogBase::DialogBase(QWidget* parent) : QDialog(parent) {}

int DialogBase::DoModal() {
    return exec() == QDialog::Accepted ? kIdOk : kIdCancel;
}

void DialogBase::Create() {
    if (std::exchange(m_initialised, true)) {
        return;
    }
    const qreal enlarged = std::max(1.0, font().pointSizeF() / kFormPointSize);
    resize((size() * enlarged).boundedTo(screen()->availableSize()));
    Guard([this] { OnInitDialog(); });
}

QWidget* DialogBase::GetDlgItem(int id) const {
    const auto found = m_controls.find(id);
    return found == m_controls.end() ? nullptr : found->second;
}

void DialogBase::accept() {
    Guard([this] { OnOK(); });
}

void DialogBase::reject() {
    Guard([this] { OnCancel(); });
}

void DialogBase::setVisible(bool visible) {
    if (visible) {
        Create();
    }
    QDialog::setVisible(visible);
}

bool DialogBase::OnInitDialog() {
    return true;
}

void DialogBase::OnOK() {
    QDialog::accept();
}

void DialogBase::OnCancel() {
    QDialog::reject();
}

void DialogBase::SetButtons(QPushButton& ok, QPushButton& cancel) {
    SetDlgItem(kIdOk, ok);
    SetDlgItem(kIdCancel, cancel);
    ok.setDefault(true);
    connect(&ok, &QPushButton::clicked, this, &DialogBase::accept);
    connect(&cancel, &QPushButton::clicked, this, &DialogBase::reject);
}

void DialogBase::LoadLanguageStrings() {
    setWindowTitle(Translated(windowTitle()));
    for (QWidget* control : findChildren<QWidget*>()) {
        TranslateControl(*control);
    }
}

void DialogBase::PostClose() {
    QMetaObject::invokeMethod(this, &DialogBase::reject, Qt::QueuedConnection);
}

void DialogBase::Tell(const QString& text, PromptIcon icon) {
    const QString title = ToQString(CSyncInfo::GetSettingCFG().SYS_szGetMessageBoxTitle());
    CurrentPrompts().Message(this, icon, title, text);
}

void DialogBase::TellKey(const CString& key, PromptIcon icon) {
    Tell(LangText(key), icon);
}

void DialogBase::TellFailure() noexcept {
    try {
        TellKey("IDS_TECHVIEW-STRING_MEMORY_ERR");
    } catch (...) {
        // Not even memory for a message.
    }
}

}  // namespace ta::ui
