#pragma once

#include "platform/ui/Prompts.h"

#include <deque>
#include <functional>
#include <vector>

namespace ta::test {

/// Prompts that answer from a queue and never block. While one lives, it is the prompts in use. A
/// prompt that was not expected, or is of another kind than the next one expected, fails the test
/// and is answered as cancelled; so does an expected one that never came.
class ScriptedPrompts final : public ui::Prompts {
public:
    enum class Kind { Message, YesNo, Choice, OpenFile, SaveFile, Colour };

    /// What one prompt showed.
    struct Shown {
        Kind kind = Kind::Message;
        ui::PromptIcon icon = ui::PromptIcon::None;
        QString title;
        QString text;    ///< the message or question; of a file picker the filter
        QString preset;  ///< of a file picker the start folder or name; of a colour picker the
                         ///< colour's name
        QStringList choices = {};                    ///< of a choice
        ui::Answer presetAnswer = ui::Answer::None;  ///< of a yes/no question: what Enter answers
        ui::SaveFileOptions saving = {};             ///< of a save-file picker
    };

    ScriptedPrompts();
    ~ScriptedPrompts() override;

    // The answers, in the order in which the prompts will come.
    void ExpectMessage() { Expect(Kind::Message); }
    void ExpectYesNo(bool yes) { Expect(Kind::YesNo, yes ? 1 : 0); }
    /// `index` -1 is Escape.
    void ExpectChoice(int index) { Expect(Kind::Choice, index); }
    void ExpectFile(const QString& path) { Expect(Kind::OpenFile, -1, path); }
    void ExpectSaveFile(const QString& path) { Expect(Kind::SaveFile, -1, path); }
    void ExpectColour(const QColor& colour) { Expect(Kind::Colour, -1, colour.name()); }
    /// The next prompt, of the kind, is cancelled.
    void ExpectCancel(Kind kind) { Expect(kind); }
    /// Runs `action` when the expected prompt that was added last comes, before it is answered.
    void Meanwhile(std::function<void()> action);

    /// All prompts so far, oldest first.
    const std::vector<Shown>& All() const { return m_shown; }
    /// The newest one; a default one, and a failed test, when there was none.
    Shown Last() const;
    /// Expected prompts that have not come yet.
    std::size_t Waiting() const { return m_answers.size(); }

    void Message(QWidget* parent, ui::PromptIcon icon, const QString& title,
                 const QString& text) override;
    ui::Answer AskYesNo(QWidget* parent, ui::PromptIcon icon, const QString& title,
                        const QString& text, ui::Answer preset) override;
    int AskChoice(QWidget* parent, ui::PromptIcon icon, const QString& title, const QString& text,
                  const QStringList& choices) override;
    QString OpenFile(QWidget* parent, const QString& title, const QString& start,
                     const QString& filter) override;
    QString SaveFile(QWidget* parent, const ui::SaveFileOptions& options) override;
    QColor AskColour(QWidget* parent, const QString& title, const QColor& preset) override;

private:
    struct Answer {
        Kind kind = Kind::Message;
        int number = -1;    ///< the choice; 1 for yes, 0 for no, -1 for none
        QString text = {};  ///< null: cancelled; of a colour its name
        std::function<void()> meanwhile = {};
    };

    void Expect(Kind kind, int number = -1, const QString& text = {}) {
        m_answers.push_back({kind, number, text});
    }
    Answer Take(const Shown& shown);

    std::deque<Answer> m_answers;
    std::vector<Shown> m_shown;
};

}  // namespace ta::test
