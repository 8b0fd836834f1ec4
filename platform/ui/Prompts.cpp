#include "platform/ui/Prompts.h"

#include "platform/ui/LangText.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>

#include <utility>

namespace ta::ui {
namespace {

QMessageBox::Icon BoxIcon(PromptIcon icon) {
    switch (icon) {
        case PromptIcon::Information:
            return QMessageBox::Information;
        case PromptIcon::Question:
            return QMessageBox::Question;
        case PromptIcon::Warning:
            return QMessageBox::Warning;
        case PromptIcon::Error:
            return QMessageBox::Critical;
        case PromptIcon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

/// The suffix of the filter's first pattern: "TASG" of "Groups (*.TASG *.txt)"; empty when none.
QString FirstSuffix(const QString& filter) {
    static const QRegularExpression pattern(R"(\*\.(\w+))");
    return pattern.match(filter).captured(1);
}

/// A hidden button of the reject role makes Escape and the close box work, as no other button.
void LetEscapeDismiss(QMessageBox& box) {
    QPushButton* dismiss = box.addButton(QMessageBox::Cancel);
    dismiss->hide();
    box.setEscapeButton(dismiss);
}

/// A dialog of the heap, since its parent may be deleted, and it with him, while it is open.
template <class Dialog>
class OpenDialog {
public:
    template <class... Arguments>
    explicit OpenDialog(Arguments&&... arguments)
        : m_dialog(new Dialog(std::forward<Arguments>(arguments)...)) {}
    ~OpenDialog() { delete m_dialog.data(); }
    OpenDialog(const OpenDialog&) = delete;
    OpenDialog& operator=(const OpenDialog&) = delete;

    Dialog& operator*() const { return *m_dialog; }
    Dialog* operator->() const { return m_dialog; }
    bool IsGone() const { return m_dialog == nullptr; }
    bool IsAccepted() const { return m_dialog->exec() == QDialog::Accepted; }

private:
    QPointer<Dialog> m_dialog;
};

class RealPrompts final : public Prompts {
public:
    void Message(QWidget* parent, PromptIcon icon, const QString& title,
                 const QString& text) override {
        const OpenDialog<QMessageBox> box(BoxIcon(icon), title, text, QMessageBox::Ok, parent);
        box->setTextFormat(Qt::PlainText);
        box->exec();
    }

    Answer AskYesNo(QWidget* parent, PromptIcon icon, const QString& title, const QString& text,
                    Answer preset) override {
        const OpenDialog<QMessageBox> box(BoxIcon(icon), title, text,
                                          QMessageBox::Yes | QMessageBox::No, parent);
        box->setTextFormat(Qt::PlainText);
        LetEscapeDismiss(*box);
        box->setDefaultButton(preset == Answer::Yes ? QMessageBox::Yes : QMessageBox::No);
        switch (box->exec()) {
            case QMessageBox::Yes:
                return Answer::Yes;
            case QMessageBox::No:
                return Answer::No;
            default:
                return Answer::None;
        }
    }

    int AskChoice(QWidget* parent, PromptIcon icon, const QString& title, const QString& text,
                  const QStringList& choices) override {
        const OpenDialog<QMessageBox> box(BoxIcon(icon), title, text, QMessageBox::NoButton,
                                          parent);
        box->setTextFormat(Qt::PlainText);
        QList<QAbstractButton*> buttons;
        for (const QString& choice : choices) {
            buttons.append(box->addButton(choice, QMessageBox::ActionRole));
        }
        LetEscapeDismiss(*box);
        if (!buttons.isEmpty()) {
            box->setDefaultButton(qobject_cast<QPushButton*>(buttons.front()));
        }
        box->exec();
        return box.IsGone() ? -1 : static_cast<int>(buttons.indexOf(box->clickedButton()));
    }

    QString OpenFile(QWidget* parent, const QString& title, const QString& start,
                     const QString& filter) override {
        const OpenDialog<QFileDialog> dialog(parent, title, start, filter);
        dialog->setFileMode(QFileDialog::ExistingFile);
        return dialog.IsAccepted() ? dialog->selectedFiles().value(0) : QString();
    }

    QString SaveFile(QWidget* parent, const SaveFileOptions& options) override {
        const OpenDialog<QFileDialog> dialog(parent, options.title, options.name, options.filter);
        dialog->setAcceptMode(QFileDialog::AcceptSave);
        dialog->setFileMode(QFileDialog::AnyFile);
        dialog->setOption(QFileDialog::DontConfirmOverwrite, !options.asksReplace);
        dialog->setDefaultSuffix(options.suffix.isNull() ? FirstSuffix(options.filter)
                                                         : options.suffix);
        return dialog.IsAccepted() ? dialog->selectedFiles().value(0) : QString();
    }

    QColor AskColour(QWidget* parent, const QString& title, const QColor& preset) override {
        const OpenDialog<QColorDialog> dialog(preset, parent);
        dialog->setWindowTitle(title);
        return dialog.IsAccepted() ? dialog->selectedColor() : QColor();
    }
};

/// Whether the user accepts the name, of a path that he chose.
bool AcceptsName(QWidget* parent, const QFileInfo& path, const SaveFileOptions& options) {
    if (path.fileName().contains('*')) {
        CurrentPrompts().Message(parent, PromptIcon::Warning, TerminalTitle(),
                                 LangText("IDS_TADIALOGS-FILE_WILDCARD", path.fileName()));
        return false;
    }
    return !options.asksCreate || path.exists() ||
           CurrentPrompts().AskYesNo(parent, PromptIcon::Question, TerminalTitle(),
                                     LangText("IDS_TADIALOGS-FILE_ASK_CREATE", path.fileName()),
                                     Answer::Yes) == Answer::Yes;
}

RealPrompts g_realPrompts;
Prompts* g_prompts = &g_realPrompts;

}  // namespace

Prompts& CurrentPrompts() {
    return *g_prompts;
}

void SetPrompts(Prompts* prompts) {
    g_prompts = prompts != nullptr ? prompts : &g_realPrompts;
}

QString AskSaveFile(QWidget* parent, const SaveFileOptions& options) {
    const QPointer<QWidget> owner(parent);
    do {
        const QString path = CurrentPrompts().SaveFile(parent, options);
        if (path.isEmpty() || AcceptsName(parent, QFileInfo(path), options)) {
            return path;
        }
    } while (owner == parent);  // he may have gone while the user read
    return {};
}

}  // namespace ta::ui
