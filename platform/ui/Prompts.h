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
    /// The same for a file to write. A name without a suffix gets the filter's first one, and the
    /// user is asked before an existing file is chosen.
    virtual QString SaveFile(QWidget* parent, const QString& title, const QString& start,
                             const QString& filter) = 0;
    /// A colour, `preset` at first; an invalid one when the user cancelled.
    virtual QColor AskColour(QWidget* parent, const QString& title, const QColor& preset) = 0;
};

/// The prompts in use: real dialogs, unless others were set.
TADIALOGS_EXPORT Prompts& CurrentPrompts();
/// Null brings the real dialogs back. The caller keeps ownership.
TADIALOGS_EXPORT void SetPrompts(Prompts* prompts);

}  // namespace ta::ui
