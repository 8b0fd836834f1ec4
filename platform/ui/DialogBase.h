#pragma once

#include "platform/Export.h"
#include "platform/Types.h"
#include "platform/ui/Prompts.h"

#include <QDialog>
#include <QStringList>

#include <map>
#include <utility>

class QPushButton;

namespace ta::ui {

/// What a modal dialog ends with, and the ids of the two buttons.
constexpr int kIdOk = 1;
constexpr int kIdCancel = 2;

/// The text of a language key, in the language in use.
TADIALOGS_EXPORT QString LangText(const CString& key);

/// The text with the arguments in the places of %1, %2 and so on; behind it when it has no places,
/// as a key has that the terminal knows no text for.
template <class... Arguments>
QString LangText(const CString& key, const QString& first, const Arguments&... rest) {
    const QString text = LangText(key);
    return text.contains("%1") ? text.arg(first, rest...)
                               : QStringList{text, first, rest...}.join(' ');
}

/// A modal dialog: filled once before it shows, ended by OnOK and OnCancel, its controls found by
/// their template ids. A derived class calls its Designer form's setupUi and SetButtons in its
/// constructor. No exception leaves: one in a handler is told as lack of memory.
class TADIALOGS_EXPORT DialogBase : public QDialog {
    Q_OBJECT

public:
    /// `parent` may be null and stays the caller's.
    explicit DialogBase(QWidget* parent = nullptr);

    /// Shows the dialog and waits for its end; kIdOk or kIdCancel.
    int DoModal();
    /// Fills the dialog without showing it, as showing does; the first call only.
    void Create();
    bool IsCreated() const { return m_initialised; }
    /// The control of a template id, or null. The dialog keeps ownership.
    QWidget* GetDlgItem(int id) const;

    // The toolkit's ways in: buttons, Enter, Escape, the close box, show and exec.
    void accept() override;
    void reject() override;
    void setVisible(bool visible) override;

protected:
    /// Runs once, before the dialog shows.
    virtual bool OnInitDialog();
    /// Enter and the OK button; ends the dialog with kIdOk.
    virtual void OnOK();
    /// Escape, the close box and the Cancel button; ends the dialog with kIdCancel.
    virtual void OnCancel();

    void SetButtons(QPushButton& ok, QPushButton& cancel);
    void SetDlgItem(int id, QWidget& control) { m_controls[id] = &control; }
    /// Puts their texts in the place of the language keys that the form's controls carry as texts,
    /// titles, tool tips and accessible names.
    void LoadLanguageStrings();
    /// Lets the close request be handled when the event loop runs next.
    void PostClose();

    /// A message box with the terminal's title.
    void Tell(const QString& text, PromptIcon icon = PromptIcon::Warning);
    /// The same with the text of a language key.
    void TellKey(const CString& key, PromptIcon icon = PromptIcon::Warning);

    /// Connects a signal to a function without arguments.
    template <class Sender, class Signal, class Handler>
    void Handle(Sender* sender, Signal signal, Handler handler) {
        connect(sender, signal, this, [this, handler] { Guard(handler); });
    }
    /// Runs `action`; false when it threw, which the user is told.
    template <class Action>
    bool Guard(const Action& action) {
        try {
            action();
            return true;
        } catch (...) {
            TellFailure();
            return false;
        }
    }

private:
    void TellFailure() noexcept;

    std::map<int, QWidget*> m_controls;
    bool m_initialised = false;
};

}  // namespace ta::ui
