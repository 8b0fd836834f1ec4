#pragma once

#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Commands.h"
#include "terminal/frame/DrawingBar.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/FrameState.h"
#include "terminal/frame/FrameToolBar.h"
#include "terminal/frame/PeriodMenu.h"
#include "terminal/frame/Session.h"

#include <QLabel>
#include <QMainWindow>
#include <QTimer>
#include <QToolButton>

namespace ta::terminal {

/// The terminal's window: chart windows as tabs, a toolbar with the symbol, the period and the
/// indicator group of the chart in front, menus, and a status bar with the cursor's values. Price
/// files and group files that are dropped on it are opened.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// Opens the tabs of the last run, on the first run the catalogue's first symbol. The first
    /// size is one that the screen has room for. `session` stays the caller's and outlives the
    /// window.
    explicit MainWindow(Session& session, QWidget* parent = nullptr);
    ~MainWindow() override;

    const Frame& Parts() const { return m_frame; }

    /// Takes up what another terminal has saved. A timer calls this.
    void PollStore();
    /// What the next start brings back.
    FrameState State() const;

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void MakeNewTabButton();
    void MakeToolBars();
    void ConnectParts();
    void Restore(const FrameState& state);
    void Run(const CommandRow& row);
    void OpenFiles(const QStringList& paths);

    void Retranslate();
    void Refresh();
    void RefreshCommands();
    void RefreshLayout();
    void RefreshGroups();

    Frame m_frame;
    DrawingBar* m_drawingBar;
    PeriodMenu* m_periodMenu;
    QToolButton* m_newTabButton;
    QLabel* m_cursorText;
    QTimer m_poll;
    bool m_shownBefore = false;
};

}  // namespace ta::terminal
