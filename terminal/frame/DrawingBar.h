#pragma once

#include "terminal/frame/Commands.h"
#include "terminal/lines/TrendLine.h"

#include <QPointer>
#include <QToolBar>

#include <optional>

namespace ta::terminal {

class DrawingBoard;

/// The toolbar of the drawing tools, and their commands: they work on the board of the chart in
/// front, and show what it is doing.
class DrawingBar : public QToolBar {
    Q_OBJECT

public:
    /// `commands` outlives the bar, whose tools are actions of it.
    explicit DrawingBar(Commands& commands, QWidget* parent = nullptr);

    /// From here on the commands work on `board`, which stays the caller's.
    void Attach(DrawingBoard& board);
    /// Runs a command of the drawing menu; others are ignored.
    void Run(Command command);
    void Retranslate();

protected:
    void changeEvent(QEvent* event) override;

private:
    void TakeIcons();
    void Refresh();

    Commands& m_commands;
    QPointer<DrawingBoard> m_board;
};

}  // namespace ta::terminal
