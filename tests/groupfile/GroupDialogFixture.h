#pragma once

#include "platform/ui/DialogBase.h"
#include "settings/Repository.h"
#include "tests/support/MemoryChart.h"
#include "tests/support/MemoryConfigStore.h"
#include "tests/support/MemoryQuotes.h"
#include "tests/support/RecordingConfigStore.h"
#include "tests/support/ScriptedPrompts.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <vector>

class QWidget;

namespace ta::test {

using Names = std::vector<CString>;

/// The process-wide repository on a store in memory, which each test presets and then loads; texts
/// are their own language keys, with their arguments behind them.
class GroupDialogFixture : public testing::Test {
protected:
    GroupDialogFixture();
    ~GroupDialogFixture() override;

    /// Loads what the test has preset in `memory`.
    CTaSettingHandle& Load();
    StudyLists Studies(const CString& name);
    Names Params(const CString& name);

    QString Path(const char* name) const { return m_folder.filePath(name); }
    static void Write(const QString& path, const std::string& bytes);
    static std::string Read(const QString& path);

    /// Shows the dialog without waiting for its end.
    static void Show(ta::ui::DialogBase& dialog);
    template <class Control>
    static Control& Find(const QWidget& dialog, const char* name) {
        auto* const control = dialog.findChild<Control*>(name);
        EXPECT_NE(control, nullptr) << name;
        return *control;
    }
    /// `texts`: control and property, and the language key without its "IDS_".
    static void ExpectTexts(const QWidget& dialog,
                            const std::vector<std::pair<QString, QString>>& texts);
    static void Click(QWidget& control);
    /// To the control that has the focus.
    static void Press(ta::ui::DialogBase& dialog, int key, Qt::KeyboardModifiers modifiers = {});

    MemoryConfigStore& memory;
    RecordingConfigStore& store;  ///< passes on to `memory`
    MemoryQuotes& quotes;
    ScriptedPrompts prompts;

private:
    QTemporaryDir m_folder;
};

}  // namespace ta::test
