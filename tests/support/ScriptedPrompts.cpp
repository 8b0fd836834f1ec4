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

void ScriptedPrompts::ExpectMessage() {
    m_answers.push_back({.kind = Kind::Message, .number = -1, .text = {}, .meanwhile = {}});
}

void ScriptedPrompts::ExpectYesNo(bool yes) {
    m_answers.push_back({.kind = Kind::YesNo, .number = yes, .text = {}, .meanwhile = {}});
}

void ScriptedPrompts::ExpectChoice(int index) {
    m_answers.push_back({.kind = Kind::Choice, .number = index, .text = {}, .meanwhile = {}});
}

void ScriptedPrompts::ExpectFile(const QString& path) {
    m_answers.push_back({.kind = Kind::OpenFile, .number = -1, .text = path, .meanwhile = {}});
}

void ScriptedPrompts::ExpectSaveFile(const QString& path) {
    m_answers.push_back({.kind = Kind::SaveFile, .number = -1, .text = path, .meanwhile = {}});
}

void ScriptedPrompts::ExpectColour(const QColor& colour) {
    m_answers.push_back(
        {.kind = Kind::Colour, .number = -1, .text = colour.name(), .meanwhile = {}});
}

void ScriptedPrompts::ExpectCancel(Kind kind) {
    m_answers.push_back({.kind = kind, .number = -1, .text = {}, .meanwhile = {}});
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
    const Answer cancelled{.kind = shown.kind, .number = -1, .text = {}, .meanwhile = {}};
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
    Take({Kind::Message, icon, title, text, {}, {}, {}});
}

ui::Answer ScriptedPrompts::AskYesNo(QWidget*, ui::PromptIcon icon, const QString& title,
                                     const QString& text, ui::Answer preset) {
    constexpr ui::Answer kAnswers[] = {ui::Answer::None, ui::Answer::No, ui::Answer::Yes};
    return kAnswers[Take({Kind::YesNo, icon, title, text, {}, {}, preset}).number + 1];
}

int ScriptedPrompts::AskChoice(QWidget*, ui::PromptIcon icon, const QString& title,
                               const QString& text, const QStringList& choices) {
    return Take({Kind::Choice, icon, title, text, {}, choices, {}}).number;
}

QString ScriptedPrompts::OpenFile(QWidget*, const QString& title, const QString& start,
                                  const QString& filter) {
    return Take({Kind::OpenFile, ui::PromptIcon::None, title, filter, start, {}, {}}).text;
}

QString ScriptedPrompts::SaveFile(QWidget*, const QString& title, const QString& start,
                                  const QString& filter) {
    return Take({Kind::SaveFile, ui::PromptIcon::None, title, filter, start, {}, {}}).text;
}

QColor ScriptedPrompts::AskColour(QWidget*, const QString& title, const QColor& preset) {
    const Shown shown{Kind::Colour, ui::PromptIcon::None, title, {}, preset.name(), {}, {}};
    return QColor(Take(shown).text);
}

}  // namespace ta::test
