#pragma once

class QMainWindow;
class QString;

namespace ta::terminal {

class ChartTabs;
class Commands;
class FrameToolBar;
class Session;

/// The parts of the terminal's window, for what works on them: the functions of the commands and
/// the openers of dialogs. All of them live as long as the window.
struct Frame {
    QMainWindow& window;  ///< the parent of dialogs
    Session& session;
    Commands& commands;
    ChartTabs& tabs;
    FrameToolBar& toolBar;

    /// Tells something in the status bar, for a while.
    void Notice(const QString& text) const;
};

}  // namespace ta::terminal
