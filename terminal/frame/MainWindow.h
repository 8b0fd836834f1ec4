#pragma once

#include "platform/Types.h"
#include "terminal/frame/Commands.h"
#include "terminal/frame/DrawingBar.h"
#include "terminal/frame/FrameState.h"
#include "terminal/frame/FrameToolBar.h"

#include <QLabel>
#include <QMainWindow>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>

#include <cstdint>
#include <utility>
#include <vector>

namespace ta::terminal {

class ChartView;
class Session;
struct SettingsPlace;
struct Symbol;

/// The terminal's window: chart windows as tabs, a toolbar with the symbol, the period and the
/// indicator group of the chart in front, menus, and a status bar with the cursor's values.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// Opens the tabs of the last run, on the first run the catalogue's first symbol. `session`
    /// stays the caller's and outlives the window.
    explicit MainWindow(Session& session, QWidget* parent = nullptr);
    ~MainWindow() override;

    /// The chart in front; there always is one.
    ChartView& CurrentChart() const;
    /// `tab` is 0 to TabCount() - 1.
    ChartView& ChartAt(int tab) const;
    int TabCount() const { return m_tabs->count(); }
    FrameToolBar& ToolBar() const { return *m_toolBar; }
    Session& GetSession() const { return m_session; }
    Commands& GetCommands() const { return *m_commands; }

    /// A new tab with what the current one shows, in front.
    void NewTab();
    /// Closes a tab, unless it is the only one.
    void CloseTab(int tab);
    /// Shows a symbol in the current chart, in the chart's period when the symbol has it.
    void OpenSymbol(std::uint8_t market, const CString& id);
    /// Reads a price file of the user's and shows it. false when it was not opened: the user was
    /// told why or has cancelled.
    bool OpenCsv(const QString& path);
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
    void MakeTabs();
    void MakeToolBar();
    void MakePeriodMenu();
    void Restore(const FrameState& state);
    ChartView& AddChart();
    /// The tabs that show a group: title and position.
    std::vector<std::pair<CString, int>> ViewsOfGroup(int uniNum) const;
    bool IsCurrent(const ChartView& chart) const;

    void Run(Command command);
    void SelectPeriod(int index);
    void SelectGroup(const CString& name);
    /// Opens the settings sheet on the current chart's group.
    void EditGroups();
    /// The same on the studies, with one of a pane selected: `pane` from 0, `study` from 1, 0 the
    /// pane.
    void EditStudies(const ChartView& chart, int pane, int study);
    void EditSettings(const SettingsPlace& place);
    /// Asks for a file when `path` is empty.
    void ImportGroups(const QString& path);
    void SetRisingRed(bool risingRed);
    void AskCsv();
    void ListLines();
    void ShowAbout();
    void FillSymbolMenu();
    void AddSymbols(QMenu& menu, const std::vector<const Symbol*>& symbols);

    void Retranslate();
    void RefreshChart();
    void RefreshPeriods();
    void RefreshGroups();
    void RefreshTab(const ChartView& chart);
    void Notice(const QString& text);

    Session& m_session;
    Commands* m_commands;
    QTabWidget* m_tabs;
    FrameToolBar* m_toolBar;
    DrawingBar* m_drawingBar;
    QToolButton* m_newTabButton;
    QLabel* m_cursorText;
    std::vector<QAction*> m_periodActions;  ///< as kPeriods
    QTimer m_poll;
    bool m_openingCsv = false;
    bool m_shownBefore = false;
};

}  // namespace ta::terminal
