#pragma once

#include "platform/Export.h"
#include "platform/Types.h"
#include "platform/ui/LangText.h"
#include "platform/ui/Prompts.h"

#include <QDialog>
#include <QPointer>

#include <map>
#include <memory>
#include <tuple>
#include <type_traits>
#include <utility>

class QAbstractItemView;
class QComboBox;
class QPushButton;

namespace ta::ui {

class FormTexts;

/// What a modal dialog ends with, and the ids of the two buttons.
constexpr int kIdOk = 1;
constexpr int kIdCancel = 2;

/// A dialog of the library: filled once before it shows, ended by OnOK and OnCancel, its controls
/// found by their template ids, its texts set from language keys. Modal with DoModal;
/// ModelessDialog is the base of windows that stay open.
///
/// A derived class has a Designer form beside it:
///
///   - Texts are language keys, "IDS_...", in whichever property a control shows a text: window
///     title, text, title, tool tip, accessible name, placeholder, entries of combo boxes, heads of
///     tables. The base puts the texts in their places and changes them with the language.
///   - A control with a template id has it as the dynamic property `templateId`:
///     <property name="templateId" stdset="0"><number>16067</number></property>
///
/// Its constructor calls setupUi, SetButtons, and Handle for each signal; OnInitDialog fills.
/// No exception leaves: one in a handler is told as lack of memory, and the dialog stays.
///
/// Enter presses the button that has the focus, and OK when another control has it; Escape and the
/// close box are Cancel. The frame of the default button goes along.
class TADIALOGS_EXPORT DialogBase : public QDialog {
    Q_OBJECT

public:
    /// `parent` may be null and stays the caller's.
    explicit DialogBase(QWidget* parent = nullptr);
    ~DialogBase() override;

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
    /// Runs once, before the dialog shows; vLoadLanguageString follows.
    virtual bool OnInitDialog();
    /// The OK button, and Enter outside of the buttons; ends the dialog with kIdOk.
    virtual void OnOK();
    /// Escape, the close box and the Cancel button; ends the dialog with kIdCancel.
    virtual void OnCancel();
    /// Sets every text; after OnInitDialog, and again at each change of the language while the
    /// dialog lives. The base sets those of the kept keys (LoadLanguageStrings). An override calls
    /// it and then makes its own texts, those with numbers or names in them.
    virtual void vLoadLanguageString();

    /// Makes them the buttons of OnOK and OnCancel; they are found as kIdOk and kIdCancel too.
    void SetButtons(QPushButton& ok, QPushButton& cancel);
    /// For a window without OK.
    void SetCancelButton(QPushButton& cancel);
    /// A second id for a control, besides its template id.
    void SetDlgItem(int id, QWidget& control) { m_controls[id] = &control; }

    /// Puts their texts in the place of the language keys that the form's controls carry, in the
    /// language in use.
    void LoadLanguageStrings();
    /// From now on the control shows the text of another key, or a text that is no key, in place of
    /// what the form has; `property` is what it shows it as ("text", "title", "toolTip", ...).
    void SetTextKey(QWidget& control, const QString& key, const char* property = "text");
    /// Appends an entry with the text of a key, which changes with the language.
    void AddTextEntry(QComboBox& combo, const CString& key, const QVariant& value = {});
    /// Heads a column that the form has no key for. The column must be there.
    void SetHeadKey(QAbstractItemView& view, int column, const CString& key);

    /// Lets the close request be handled when the event loop runs next.
    void PostClose();

    /// A message box with the terminal's title.
    void Tell(const QString& text, PromptIcon icon = PromptIcon::Warning);
    /// The same with the text of a language key.
    void TellKey(const CString& key, PromptIcon icon = PromptIcon::Warning);
    /// A yes/no question with the question icon; a null title is the terminal's. Escape answers
    /// nothing: leave everything as it is. `preset` is what Enter answers; never Yes where Yes
    /// destroys something.
    Answer Ask(const QString& text, const QString& title = {}, Answer preset = Answer::No);
    /// Tells why a field's content cannot be accepted, then leads the user back to it: takes back
    /// what he has typed since the program last set its text (where the field remembers that, as
    /// edits, spin boxes and editable combo boxes do), gives it the focus and selects all of it.
    void Refuse(QWidget& field, const QString& text, PromptIcon icon = PromptIcon::Warning);

    /// Connects a signal to a function, which takes the signal's arguments or the first few of
    /// them.
    template <class Sender, class Signal, class Handler>
    void Handle(Sender* sender, Signal signal, Handler handler) {
        connect(sender, signal, this, [this, handler](const auto&... arguments) -> void {
            Guard([&] { CallWithFirst(handler, std::tie(arguments...)); });
        });
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

    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    /// Presses the button that has the focus, when the event is Enter and there is one.
    bool PressFocusedButton(const QKeyEvent& event);

private:
    /// Calls the handler with as many of the arguments, from the first, as it takes.
    template <class Handler, class... Arguments>
    static void CallWithFirst(const Handler& handler, const std::tuple<Arguments...>& arguments) {
        if constexpr (std::is_invocable_v<Handler, Arguments...>) {
            std::apply(handler, arguments);
        } else {
            CallWithFewer(handler, arguments, std::make_index_sequence<sizeof...(Arguments) - 1>());
        }
    }
    template <class Handler, class Tuple, std::size_t... Index>
    static void CallWithFewer(const Handler& handler, const Tuple& arguments,
                              std::index_sequence<Index...>) {
        CallWithFirst(handler, std::tie(std::get<Index>(arguments)...));
    }

    void TellFailure() noexcept;
    void ShowDefaultButton(QWidget* focus);

    std::map<int, QPointer<QWidget>> m_controls;
    std::unique_ptr<FormTexts> m_texts;
    QPointer<QPushButton> m_ok;
    QPointer<QPushButton> m_default;  ///< the one with the default button's frame
    bool m_initialised = false;
};

}  // namespace ta::ui
