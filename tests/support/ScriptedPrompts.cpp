#include "tests/support/ScriptedPrompts.h"

#include <gtest/gtest.h>

namespace ta::test {
namespace {

const char* KindName(ScriptedPrompts::Kind kind) {
    constexpr const char* kNames[] = {"message",          "yes/no question",  "choice",
                                      "open-file picker", "save-file picker", "colour picker"};
    return kNames[static_cast<int>(kind)];
}

}  // namespace

ScriptedPrompts::ScriptedPrompts() {
    ui::SetPrompts(this);
}

ScriptedPrompts::~ScriptedPrompts() {
    ui::SetPrompts(nullptr);
    for (const Answer& answer : m_answers) {
        ADD_FAILURE() << "the expected " << KindName(answer.kind) << " did not come";
    }
}

void ScriptedPrompts::Meanwhile(std::function<void()> action) {
    ASSERT_FALSE(m_answers.empty());
    m_answers.back().meanwhile = std::move(action);
}

ScriptedPrompts::Shown ScriptedPrompts::Last() const {
    if (m_shown.empty()) {
        ADD_FAILURE() << "no prompt was shown";
        return {};
    }
    return m_shown.back();
}

ScriptedPrompts::Answer ScriptedPrompts::Take(const Shown& shown) {
    m_shown.push_back(shown);
    const Answer cancelled{shown.kind};
    if (m_answers.empty()) {
        ADD_FAILURE() << "unexpected " << KindName(shown.kind) << ": " << shown.text.toStdString();
        return cancelled;
    }
    const Answer answer = m_answers.front();
    m_answers.pop_front();
    if (answer.kind != shown.kind) {
        ADD_FAILURE() << "expected a " << KindName(answer.kind) << ", but there came a "
                      << KindName(shown.kind) << ": " << shown.text.toStdString();
        return cancelled;
    }
    if (answer.meanwhile) {
        answer.meanwhile();
    }
    return answer;
}

void ScriptedPrompts::Message(QWidget*, ui::PromptIcon icon, const QString& title,
                              const QString& text) {
    Take({Kind::Message, icon, title, text, {}});
}

ui::Answer ScriptedPrompts::AskYesNo(QWidget*, ui::PromptIcon icon, const QString& title,
                                     const QString& text, ui::Answer preset) {
    constexpr ui::Answer kAnswers[] = {ui::Answer::None, ui::Answer::No, ui::Answer::Yes};
    return kAnswers[Take({Kind::YesNo, icon, title, text, {}, {}, preset}).number + 1];
}

int ScriptedPrompts::AskChoice(QWidget*, ui::PromptIcon icon, const QString& title,
                               const QString& text, const QStringList& choices) {
    return Take({Kind::Choice, icon, title, text, {}, choices}).number;
}

QString ScriptedPrompts::OpenFile(QWidget*, const QString& title, const QString& start,
                                  const QString& filter) {
    return Take({Kind::OpenFile, ui::PromptIcon::None, title, filter, start}).text;
}

QString ScriptedPrompts::SaveFile(QWidget*, const ui::SaveFileOptions& options) {
    return Take({Kind::SaveFile,
                 ui::PromptIcon::None,
                 options.title,
                 options.filter,
                 options.name,
                 {},
                 {},
                 options})
        .text;
}

QColor ScriptedPrompts::AskColour(QWidget*, const QString& title, const QColor& preset) {
    return QColor(Take({Kind::Colour, ui::PromptIcon::None, title, {}, preset.name()}).text);
}

}  // namespace ta::test
