#include "platform/ui/DialogBase.h"

#include "platform/ui/FormTexts.h"
#include "platform/ui/Guard.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QToolButton>

#include <algorithm>

namespace ta::ui {
namespace {

// The font for which the forms' sizes are drawn.
constexpr qreal kFormPointSize = 10;

/// The edit box that a field is or holds, or null.
QLineEdit* EditOf(QWidget& field) {
    auto* edit = qobject_cast<QLineEdit*>(&field);
    return edit != nullptr ? edit : field.findChild<QLineEdit*>();
}

/// Which button Enter presses is the base's business alone.
void LeaveEnterToBase(const QWidget& form) {
    for (QPushButton* button : form.findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
    }
}

}  // namespace

DialogBase::DialogBase(QWidget* parent) : QDialog(parent), m_texts(std::make_unique<FormTexts>()) {
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* now) { ShowDefaultButton(now); });
}

DialogBase::~DialogBase() {
    qApp->disconnect(this);
}

int DialogBase::DoModal() {
    return exec() == QDialog::Accepted ? kIdOk : kIdCancel;
}

void DialogBase::Create() {
    if (std::exchange(m_initialised, true)) {
        return;
    }
    LeaveEnterToBase(*this);
    if (isWindow()) {
        const qreal enlarged = std::max(1.0, font().pointSizeF() / kFormPointSize);
        resize((size() * enlarged).boundedTo(screen()->availableSize()));
    }
    m_texts->Collect(*this);
    Guard([this] { OnInitDialog(); });
    Guard([this] { vLoadLanguageString(); });
}

QWidget* DialogBase::GetDlgItem(int id) const {
    const auto found = m_controls.find(id);
    if (found != m_controls.end()) {
        return found->second;
    }
    const QList<QWidget*> controls = findChildren<QWidget*>();
    const auto item = std::ranges::find_if(controls, [id](const QWidget* control) {
        const QVariant own = control->property("templateId");
        return own.isValid() && own.toInt() == id;
    });
    return item == controls.end() ? nullptr : *item;
}

// ---- Opening and closing ----

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

void DialogBase::PostClose() {
    QMetaObject::invokeMethod(this, &DialogBase::reject, Qt::QueuedConnection);
}

// ---- Buttons and keys ----

void DialogBase::SetButtons(QPushButton& ok, QPushButton& cancel) {
    m_ok = &ok;
    SetDlgItem(kIdOk, ok);
    connect(&ok, &QPushButton::clicked, this, &DialogBase::accept);
    SetCancelButton(cancel);
    ShowDefaultButton(&ok);
}

void DialogBase::SetCancelButton(QPushButton& cancel) {
    SetDlgItem(kIdCancel, cancel);
    connect(&cancel, &QPushButton::clicked, this, &DialogBase::reject);
}

void DialogBase::ShowDefaultButton(QWidget* focus) {
    // No focus at all: perhaps because the one that had it is being destroyed, and its neighbours
    // with it, among which nothing can be looked for.
    if (focus == nullptr) {
        return;
    }
    auto* button = qobject_cast<QPushButton*>(focus);
    if (button == nullptr || (button != m_ok && button->window() != this)) {
        button = m_ok;
    }
    if (m_default != nullptr && m_default != button) {
        m_default->setDefault(false);
    }
    if (button != nullptr) {
        button->setDefault(true);
    }
    m_default = button;
}

bool DialogBase::PressFocusedButton(const QKeyEvent& event) {
    const bool isEnter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    const bool isPlain = (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    QWidget* focus = window()->focusWidget();
    if (!isEnter || !isPlain ||
        (qobject_cast<QPushButton*>(focus) == nullptr &&
         qobject_cast<QToolButton*>(focus) == nullptr)) {
        return false;
    }
    static_cast<QAbstractButton*>(focus)->click();
    return true;
}

void DialogBase::keyPressEvent(QKeyEvent* event) {
    if (!PressFocusedButton(*event)) {
        QDialog::keyPressEvent(event);
    }
}

// ---- Texts ----

void DialogBase::vLoadLanguageString() {
    LoadLanguageStrings();
}

void DialogBase::AddFormPart(QWidget& part) {
    LeaveEnterToBase(part);
    m_texts->CollectPart(part);
}

void DialogBase::LoadLanguageStrings() {
    m_texts->Collect(*this);
    m_texts->Apply();
}

void DialogBase::SetTextKey(QWidget& control, const QString& key, const char* property) {
    m_texts->Collect(*this);
    m_texts->Keep(control, property, key);
}

void DialogBase::AddTextEntry(QComboBox& combo, const CString& key, const QVariant& value) {
    combo.addItem({}, value);
    m_texts->KeepEntry(combo, combo.count() - 1, QString::fromStdString(key));
}

void DialogBase::SetHeadKey(QAbstractItemView& view, int column, const CString& key) {
    m_texts->KeepHead(view, column, QString::fromStdString(key));
}

void DialogBase::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && IsCreated()) {
        Guard([this] { vLoadLanguageString(); });
    }
}

// ---- Prompts ----

void DialogBase::Tell(const QString& text, PromptIcon icon) {
    CurrentPrompts().Message(this, icon, TerminalTitle(), text);
}

void DialogBase::TellKey(const CString& key, PromptIcon icon) {
    Tell(LangText(key), icon);
}

Answer DialogBase::Ask(const QString& text, const QString& title, Answer preset) {
    return CurrentPrompts().AskYesNo(this, PromptIcon::Question,
                                     title.isNull() ? TerminalTitle() : title, text, preset);
}

void DialogBase::Refuse(QWidget& field, const QString& text, PromptIcon icon) {
    const QPointer<QWidget> alive(&field);
    Tell(text, icon);
    if (alive == nullptr) {
        return;  // gone with the dialog while the user read
    }
    QLineEdit* edit = EditOf(field);
    while (edit != nullptr && edit->isUndoAvailable()) {
        edit->undo();
    }
    field.setFocus();
    if (edit != nullptr) {
        edit->selectAll();
    }
}

void DialogBase::TellFailure() noexcept {
    ui::TellFailure(this);
}

}  // namespace ta::ui
