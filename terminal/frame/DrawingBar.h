#pragma once

#include "terminal/frame/Commands.h"
#include "terminal/lines/TrendLine.h"

#include <QPointer>
#include <QToolBar>

#include <optional>

namespace ta::terminal {

class DrawingBoard;

/// The toolbar of the drawing tools. It and the commands of the drawing menu show what the board of
/// the chart in front is doing.
class DrawingBar : public QToolBar {
    Q_OBJECT

public:
    /// `commands` outlives the bar, whose tools are actions of it.
    explicit DrawingBar(Commands& commands, QWidget* parent = nullptr);

    /// From here on `board` is shown, which stays the caller's; the tool of the one before is
    /// dropped. Null: there is nothing to draw on, and the commands are greyed.
    void Attach(DrawingBoard* board);
    void Retranslate();

protected:
    void changeEvent(QEvent* event) override;

private:
    void TakeIcons();
    void Refresh();
    void ShowLine(const TrendLine* line);
    void ShowStep(Command command, const char* key, const char* stepKey, const QString& name);

    Commands& m_commands;
    QPointer<DrawingBoard> m_board;
};

}  // namespace ta::terminal
