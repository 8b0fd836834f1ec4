#include "platform/ui/PenSamples.h"
#include "terminal/lang/Language.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/lines/LinePens.h"

#include <qcustomplot.h>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>

// The mouse and the keys of drawing. What is not a matter of lines is left to the chart view.

namespace ta::terminal {
namespace {

bool IsDrag(const QPointF& from, const QPointF& to) {
    return (to - from).manhattanLength() >= QApplication::startDragDistance();
}

bool IsOnAxis(const PlotMapping& mapping, double x) {
    return x < mapping.left || x > mapping.left + mapping.width;
}

}  // namespace

bool DrawingBoard::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &m_plot) {
        return OnPlotEvent(*event);
    }
    if (event->type() == QEvent::KeyPress) {
        return OnKey(static_cast<QKeyEvent&>(*event).key());
    }
    if (event->type() == QEvent::ContextMenu) {
        return OnContextMenu(static_cast<QContextMenuEvent&>(*event));
    }
    return QObject::eventFilter(watched, event);
}

bool DrawingBoard::OnPlotEvent(QEvent& event) {
    switch (event.type()) {
        case QEvent::MouseButtonPress:
            return OnPress(static_cast<const QMouseEvent&>(event));
        case QEvent::MouseButtonDblClick:
            // The second click of a quick pair sets a point as any other.
            return m_tool.IsActive() && OnPress(static_cast<const QMouseEvent&>(event));
        case QEvent::MouseMove:
            return OnMove(static_cast<const QMouseEvent&>(event));
        case QEvent::MouseButtonRelease:
            return OnRelease(static_cast<const QMouseEvent&>(event));
        case QEvent::ContextMenu:
            return OnContextMenu(static_cast<const QContextMenuEvent&>(event));
        case QEvent::Leave:
            m_mouse.reset();
            Repaint();
            return false;
        default:
            return false;
    }
}

bool DrawingBoard::OnPress(const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton) {
        return false;
    }
    const QPointF point = event.position();
    m_press.reset();
    if (m_tool.IsActive()) {
        const DrawingFrame frame = m_asked.frame();
        if (!frame.IsDrawable() || !frame.Area().contains(point)) {
            return false;
        }
        m_mouse = point;
        m_press = point;
        PlaceAt(point);
        return true;
    }
    const auto hit = HitAt(point);
    if (!hit) {
        if (!m_selected.empty()) {
            Select({});
        }
        return false;
    }
    BeginMove(*hit, point);
    Select(CString(m_lines[hit->line].data));
    return m_move.has_value();
}

bool DrawingBoard::OnMove(const QMouseEvent& event) {
    m_mouse = event.position();
    if (m_move) {
        m_move->moved = m_move->moved || IsDrag(m_move->start, *m_mouse);
        if (m_move->moved) {
            MoveTo(*m_mouse);
        }
    } else if (m_tool.IsActive()) {
        Repaint();
    } else if (event.buttons() == Qt::NoButton) {
        ShowMouse(*m_mouse);
    }
    return false;
}

/// What the mouse would take.
void DrawingBoard::ShowMouse(const QPointF& point) {
    const auto hit = m_lines.empty() ? std::nullopt : HitAt(point);
    if (!hit) {
        m_plot.unsetCursor();
    } else if (m_lines[hit->line].line.locked) {
        m_plot.setCursor(Qt::PointingHandCursor);
    } else {
        m_plot.setCursor(hit->anchor < 0 ? Qt::SizeAllCursor : Qt::PointingHandCursor);
    }
}

bool DrawingBoard::OnRelease(const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton) {
        return false;
    }
    if (m_move) {
        EndMove();
        return true;
    }
    const auto press = std::exchange(m_press, std::nullopt);
    if (!press) {
        return false;
    }
    const DrawingFrame frame = m_asked.frame();
    if (m_tool.IsActive() && IsDrag(*press, event.position()) && frame.IsDrawable()) {
        PlaceAt(event.position());
    }
    return true;
}

bool DrawingBoard::OnKey(int key) {
    switch (key) {
        case Qt::Key_Escape:
            return Cancel();
        case Qt::Key_Delete:
        case Qt::Key_Backspace:
            if (m_selected.empty()) {
                return false;
            }
            DeleteSelected();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            if (!m_tool.IsActive()) {
                return false;
            }
            if (const auto cursor = m_asked.cursor()) {
                PlaceAt(*cursor);
            }
            return true;
        default:
            return false;
    }
}

bool DrawingBoard::OnContextMenu(const QContextMenuEvent& event) {
    if (m_tool.IsActive() || m_move) {
        Cancel();
        return true;
    }
    const bool byMouse = event.reason() == QContextMenuEvent::Mouse;
    if (byMouse && IsOnAxis(m_asked.frame().mapping, event.pos().x())) {
        return false;
    }
    if (byMouse) {
        const auto hit = HitAt(event.pos());
        Select(hit ? CString(m_lines[hit->line].data) : CString());
    }
    return false;
}

void DrawingBoard::AddMenuEntries(QMenu& menu) {
    if (const TrendLine* line = SelectedLine()) {
        AddLineEntries(menu, *line);
    }
    struct Turning {
        const char* key;
        QString name;
        void (DrawingBoard::*turn)();
    };
    for (const auto& [key, name, turn] :
         {Turning{"IDS_TERMINAL-CHART_UNDO_STEP", UndoName(), &DrawingBoard::Undo},
          Turning{"IDS_TERMINAL-CHART_REDO_STEP", RedoName(), &DrawingBoard::Redo}}) {
        if (!name.isEmpty()) {
            menu.addAction(Tr(key).arg(name), this, turn);
        }
    }
    if (!m_lines.empty()) {
        menu.addAction(Tr("IDS_TERMINAL-CHART_LINES_DELETE_ALL"), this, &DrawingBoard::DeleteAll);
    }
}

void DrawingBoard::AddLineEntries(QMenu& menu, const TrendLine& line) {
    menu.addSection(TrendLineKindName(static_cast<int>(line.kind)));
    menu.addAction(LinePenIcon(line.pen, menu.palette()), Tr("IDS_TERMINAL-CHART_LINE_PEN"), this,
                   &DrawingBoard::ChangePen);
    menu.addAction(ui::ColourIcon(QColor::fromRgb(line.pen.colour)),
                   Tr("IDS_TERMINAL-CHART_LINE_COLOUR"), this, &DrawingBoard::ChangeColour);
    QAction* lock = menu.addAction(Tr("IDS_TERMINAL-CHART_LINE_LOCK"));
    lock->setCheckable(true);
    lock->setChecked(line.locked);
    connect(lock, &QAction::toggled, this, &DrawingBoard::LockSelected);
    QAction* remove =
        menu.addAction(Tr("IDS_TERMINAL-CHART_LINE_DELETE"), this, &DrawingBoard::DeleteSelected);
    remove->setEnabled(!line.locked);
    menu.addSeparator();
}

}  // namespace ta::terminal
