#pragma once

#include "platform/ui/DialogBase.h"
#include "settings/Repository.h"
#include "tests/support/ManualTimers.h"
#include "tests/support/MemoryChart.h"
#include "tests/support/MemoryConfigStore.h"
#include "tests/support/MemoryQuotes.h"
#include "tests/support/MemoryServices.h"
#include "tests/support/ScriptedPrompts.h"

#include <QListWidget>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

namespace ta::test {

/// A dialog's surroundings in memory: the process-wide repository on a store that the test presets,
/// a quote back-end, entitlement, a clock, timers and prompts. Texts are their own language keys,
/// with their arguments behind them; the terminal's message-box title is "Terminal".
class DialogFixture : public testing::Test {
protected:
    DialogFixture();
    ~DialogFixture() override;

    /// Loads what the test has preset in `memory`.
    CTaSettingHandle& Load();

    QString Path(const char* name) const { return m_folder.filePath(name); }
    static void Write(const QString& path, const std::string& bytes);
    /// "no file" when there is none.
    static std::string Read(const QString& path);

    /// Shows the dialog without waiting for its end.
    static void Show(QWidget& dialog);
    /// The control of a name, or of a template id; a missing one ends the test program.
    template <class Control>
    static Control& Find(const QWidget& dialog, const char* name) {
        auto* const control = dialog.findChild<Control*>(name);
        EXPECT_NE(control, nullptr) << name;
        return *control;
    }
    template <class Control>
    static Control& Item(const ui::DialogBase& dialog, int id) {
        auto* const control = qobject_cast<Control*>(dialog.GetDlgItem(id));
        EXPECT_NE(control, nullptr) << id;
        return *control;
    }

    // The user's hands.
    static void Click(QWidget& control);
    static void Click(ui::DialogBase& dialog, int id) { Click(Item<QWidget>(dialog, id)); }
    /// A key for the control that has the focus.
    static void Press(QWidget& dialog, int key, Qt::KeyboardModifiers modifiers = {});
    /// A button's Alt key: buttons show that they are pressed for a moment before they act.
    static void PressAlt(QWidget& dialog, int key);
    /// Selects what is in the field and types over it.
    static void Type(QWidget& field, const char* text);

    /// The mouse moves over a view with the button down.
    static void MoveMouse(QWidget& view, QPoint to, Qt::MouseButtons buttons = Qt::LeftButton);
    /// Presses, moves half way and all the way, and lets go after `atEnd`.
    static void DragMouse(QWidget& view, QPoint from, QPoint to,
                          const std::function<void()>& atEnd = {});
    static QStringList Texts(const QListWidget& list);

    /// The text of the one message that `action` brings.
    template <class Action>
    QString Told(const Action& action) {
        prompts.ExpectMessage();
        action();
        return prompts.Last().text;
    }
    /// The same, of a box with the terminal's title and this icon.
    QString ToldBy(const std::function<void()>& action,
                   ui::PromptIcon icon = ui::PromptIcon::Warning);

    /// Other texts for some keys, told to the dialog as a change of the language.
    void Translate(QWidget& dialog, std::initializer_list<std::pair<const CString, CString>> texts);

    MemoryConfigStore& memory;
    MemoryQuotes& quotes;
    MemoryEntitlement& entitlement;
    FixedClock clock;
    ManualTimers timers;
    ScriptedPrompts prompts;

private:
    QTemporaryDir m_folder;
};

}  // namespace ta::test
