#include "terminal/frame/DrawingBar.h"

#include "platform/ui/PenSamples.h"
#include "terminal/frame/DrawingIcons.h"
#include "terminal/lang/Language.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/lines/LinePens.h"

#include <QEvent>

namespace ta::terminal {
namespace {

struct Tool {
    Command command;
    std::optional<TrendLineKind> kind;
};

constexpr Tool kTools[] = {
    {Command::DrawPointer, std::nullopt},
    {Command::DrawLine, TrendLineKind::Line},
    {Command::DrawSegment, TrendLineKind::Segment},
    {Command::DrawHorizontal, TrendLineKind::Horizontal},
    {Command::DrawParallel, TrendLineKind::Parallel},
    {Command::DrawRailLine, TrendLineKind::RailLine},
    {Command::DrawGoldenCut, TrendLineKind::GoldenCut},
};

}  // namespace

DrawingBar::DrawingBar(Commands& commands, QWidget* parent)
    : QToolBar(parent), m_commands(commands) {
    setObjectName("drawingBar");
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setIconSize(QSize(20, 20));
    for (const Tool& tool : kTools) {
        addAction(&m_commands.At(tool.command));
    }
    TakeIcons();
    Retranslate();
}

void DrawingBar::Attach(DrawingBoard* board) {
    if (board && m_board == board) {
        return;
    }
    if (m_board) {
        m_board->disconnect(this);
        m_board->ChooseTool(std::nullopt);
    }
    m_board = board;
    if (m_board) {
        connect(m_board, &DrawingBoard::changed, this, &DrawingBar::Refresh);
    }
    Refresh();
}

void DrawingBar::Refresh() {
    for (const Tool& tool : kTools) {
        m_commands.At(tool.command).setEnabled(m_board);
        if (m_board && m_board->Tool() == tool.kind) {
            m_commands.At(tool.command).setChecked(true);
        }
    }
    const bool any = m_board && m_board->LineCount() > 0;
    m_commands.At(Command::SelectLine).setEnabled(any);
    m_commands.At(Command::DeleteAllLines).setEnabled(any);
    ShowLine(m_board ? m_board->SelectedLine() : nullptr);
    ShowStep(Command::UndoLine, "IDS_TERMINAL-CHART_UNDO", "IDS_TERMINAL-CHART_UNDO_STEP",
             m_board ? m_board->UndoName() : QString());
    ShowStep(Command::RedoLine, "IDS_TERMINAL-CHART_REDO", "IDS_TERMINAL-CHART_REDO_STEP",
             m_board ? m_board->RedoName() : QString());
}

/// Of the selected line; null: there is none.
void DrawingBar::ShowLine(const TrendLine* line) {
    for (const Command command :
         {Command::LinePen, Command::LineColour, Command::LockLine, Command::DeleteLine}) {
        m_commands.At(command).setEnabled(line);
    }
    m_commands.At(Command::LockLine).setChecked(line && line->locked);
    m_commands.At(Command::LinePen).setIcon(line ? LinePenIcon(line->pen, palette()) : QIcon());
    m_commands.At(Command::LineColour)
        .setIcon(line ? ui::ColourIcon(QColor::fromRgb(line->pen.colour)) : QIcon());
}

/// `name` of the step; empty: there is none.
void DrawingBar::ShowStep(Command command, const char* key, const char* stepKey,
                          const QString& name) {
    QAction& action = m_commands.At(command);
    action.setEnabled(!name.isEmpty());
    action.setText(name.isEmpty() ? Tr(key) : Tr(stepKey).arg(name));
}

void DrawingBar::Retranslate() {
    setWindowTitle(Tr("IDS_TERMINAL-FRAME_DRAWING_BAR"));
    Refresh();
}

void DrawingBar::TakeIcons() {
    for (const Tool& tool : kTools) {
        m_commands.At(tool.command).setIcon(DrawingIcon(tool.kind, palette()));
    }
}

void DrawingBar::changeEvent(QEvent* event) {
    QToolBar::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        TakeIcons();
        Refresh();
    }
}

}  // namespace ta::terminal
