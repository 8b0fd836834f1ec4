#pragma once

#include "settings/Repository.h"
#include "terminal/chart/ChartView.h"
#include "terminal/frame/MainWindow.h"
#include "terminal/frame/Session.h"
#include "tests/support/ScriptedPrompts.h"

#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

namespace ta::test {

/// A running terminal in a folder of its own: services, window, and prompts that the test answers.
/// Its market data are market 2 with SPX (daily) and AMZN (monthly only), and market 16 with 9901
/// 模擬電子 / Simulated Electronics (daily and minutes).
class FrameTest : public testing::Test {
protected:
    FrameTest();

    void SetUp() override { Start(); }
    void TearDown() override { End(); }

    /// Starts the terminal; End() closes its window and takes the services away. A second Start()
    /// is the user's next run.
    void Start();
    void End();

    terminal::MainWindow& Window() { return *m_window; }
    terminal::Session& Session() { return *m_session; }
    terminal::ChartTabs& Tabs() { return m_window->Parts().tabs; }
    terminal::ChartView& Chart() { return *Tabs().CurrentChart(); }
    terminal::FrameToolBar& ToolBar() const { return m_window->Parts().toolBar; }
    QString Status() const;

    QAction& Action(terminal::Command command) { return m_window->Parts().commands.At(command); }
    void Choose(terminal::Command command) { Action(command).trigger(); }
    void ChooseGroup(const QString& name) { emit ToolBar().groupChosen(name); }
    QStringList GroupsInBox() const;
    static QStringList GroupsInRepository();
    /// Adds a group, saves it and shows it in the current chart.
    void AddGroup(const QString& name);
    /// Handles events until `condition` holds; false when it has not after some seconds.
    static bool Await(const std::function<bool()>& condition);

    QString StorePath() const { return m_folder.filePath("settings.db"); }
    QString FilePath(const QString& name) const { return m_folder.filePath(name); }
    QString WriteFile(const QString& name, const QString& text) const;

    QTemporaryDir m_folder;
    ScriptedPrompts m_prompts;
    terminal::Options m_options;

private:
    std::unique_ptr<terminal::Session> m_session;
    std::unique_ptr<terminal::MainWindow> m_window;
};

}  // namespace ta::test
