#pragma once

#include "platform/Export.h"

#include <QColor>
#include <QString>
#include <QStringList>

class QWidget;

namespace ta::ui {

enum class PromptIcon { None, Information, Question, Warning, Error };

/// Of a yes/no question.
enum class Answer { None, No, Yes };

/// How a file to write is asked for.
struct SaveFileOptions {
    QString title = {};
    QString name = {};        ///< what stands in the name field at first, with or without a folder
    QString filter = {};      ///< as QFileDialog takes it, "*.TASG"
    QString suffix = {};      ///< of a name without one, "csv"; null: the filter's first one
    bool asksCreate = false;  ///< the user is asked before a new file is chosen
    bool asksReplace = true;  ///< and before an existing one is
};

/// The one door to message boxes and to file and colour pickers, so that tests can answer them.
class TADIALOGS_EXPORT Prompts {
public:
    virtual ~Prompts() = default;

    /// A message with an OK button.
    virtual void Message(QWidget* parent, PromptIcon icon, const QString& title,
                         const QString& text) = 0;
    /// A yes/no question. Escape and closing the box are no answer: the caller leaves everything as
    /// it is. `preset`: the button that Enter presses; never Yes where Yes destroys something.
    virtual Answer AskYesNo(QWidget* parent, PromptIcon icon, const QString& title,
                            const QString& text, Answer preset = Answer::No) = 0;
    /// A question with one button per text of `choices`, the first one the default; the index of
    /// the one pressed, or -1 for Escape and closing the box.
    virtual int AskChoice(QWidget* parent, PromptIcon icon, const QString& title,
                          const QString& text, const QStringList& choices) = 0;
    /// A path, or a null string when the user cancelled. `filter` as QFileDialog takes it.
    virtual QString OpenFile(QWidget* parent, const QString& title, const QString& start,
                             const QString& filter) = 0;
    /// The picker of AskSaveFile, which dialogs call: the same for a file to write, with all
    /// options but asksCreate.
    virtual QString SaveFile(QWidget* parent, const SaveFileOptions& options) = 0;
    /// A colour, `preset` at first; an invalid one when the user cancelled.
    virtual QColor AskColour(QWidget* parent, const QString& title, const QColor& preset) = 0;
};

/// The prompts in use: real dialogs, unless others were set.
TADIALOGS_EXPORT Prompts& CurrentPrompts();
/// Null brings the real dialogs back. The caller keeps ownership.
TADIALOGS_EXPORT void SetPrompts(Prompts* prompts);

/// The path of a file to write, or an empty string when the user cancelled. The current folder of
/// the process stays. A name with "*" is a filter and no file: that is told, and the picker comes
/// again, as it does when a new file shall not be created after all.
TADIALOGS_EXPORT QString AskSaveFile(QWidget* parent, const SaveFileOptions& options);

}  // namespace ta::ui
