#include "terminal/chart/ChartPage.h"
#include "terminal/chart/ChartScene.h"
#include "terminal/plot/PlotModel.h"

#include <qcustomplot.h>
#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QWheelEvent>

#include <cmath>

// The mouse and the keys of a chart window.

namespace ta::terminal {
namespace {

constexpr double kWheelStep = 1.2;  // zoom of one notch
constexpr double kNotch = 120;      // QWheelEvent's angle of it
constexpr double kPanShare = 0.1;   // of the view, for one pan step
constexpr double kPageShare = 0.9;

}  // namespace

bool ChartPage::FollowsMouse() const {
    return m_model->Options().uCursorMoveStyle == 0 || IsPlacing();
}

bool ChartPage::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_plot) {
        return QWidget::eventFilter(watched, event);
    }
    switch (event->type()) {
        case QEvent::MouseButtonPress:
            OnPress(static_cast<const QMouseEvent&>(*event));
            return false;
        case QEvent::MouseMove:
            OnMove(static_cast<const QMouseEvent&>(*event));
            return true;
        case QEvent::MouseButtonRelease:
            OnRelease(static_cast<const QMouseEvent&>(*event));
            return false;
        case QEvent::MouseButtonDblClick:
            OnDoubleClick(static_cast<const QMouseEvent&>(*event));
            return true;
        case QEvent::Wheel:
            OnWheel(static_cast<const QWheelEvent&>(*event));
            event->accept();
            return true;
        case QEvent::ContextMenu:  // of the mouse; it would come to the page once more
            OnPlotMenu(static_cast<QContextMenuEvent&>(*event));
            return true;
        case QEvent::Leave:
            OnLeave();
            return false;
        default:
            return false;
    }
}

void ChartPage::OnPress(const QMouseEvent& event) {
    if (event.button() == Qt::LeftButton) {
        m_drag = {true, false, event.position(), m_scene->Range().Lower(),
                  m_scene->BorderAt(event.position())};
    }
}

void ChartPage::OnMove(const QMouseEvent& event) {
    if (m_drag.active && m_drag.border >= 0) {
        m_drag.moved = true;
        m_scene->MoveBorder(m_drag.border, event.position().y());
        Draw();
        return;
    }
    if (event.buttons() == Qt::NoButton) {
        ShowBorder(event.position());
    }
    const QPointF moved = event.position() - m_drag.start;
    if (m_drag.active && !m_drag.moved &&
        std::abs(moved.x()) >= QApplication::startDragDistance()) {
        m_drag.moved = true;
        setCursor(Qt::ClosedHandCursor);
    }
    if (m_drag.moved) {
        m_scene->Range().MoveTo(m_drag.lower - moved.x() / Mapping().PixelsPerBar());
        Draw();
    }
    if (FollowsMouse()) {
        PutCursorAt(event.position());
    }
}

void ChartPage::OnRelease(const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton || !m_drag.active) {
        return;
    }
    const bool isBorder = m_drag.border >= 0;
    if (!m_drag.moved && !isBorder) {
        PutCursorAt(event.position());
    }
    if (m_drag.moved && isBorder) {
        OnShares();
    }
    m_drag = {};
    unsetCursor();
}

void ChartPage::ShowBorder(const QPointF& position) {
    if (m_scene->BorderAt(position) >= 0) {
        setCursor(Qt::SplitVCursor);
    } else if (cursor().shape() == Qt::SplitVCursor) {
        unsetCursor();
    }
}

void ChartPage::OnDoubleClick(const QMouseEvent& event) {
    if (event.button() == Qt::LeftButton && m_scene->BorderAt(event.position()) >= 0) {
        m_scene->SetShares({});
        Draw();
        OnShares();
        return;
    }
    const AxisPlace axis = m_scene->AxisAt(event.position());
    if (axis.IsThere()) {
        if (event.button() == Qt::LeftButton) {
            MakeAxisAutomatic(axis);
        }
        return;
    }
    const auto [pane, study] = m_scene->PaneAndStudyAt(event.position());
    if (event.button() == Qt::LeftButton && pane >= 0) {
        emit legendDoubleClicked(pane, study);
    }
}

void ChartPage::OnPlotMenu(QContextMenuEvent& event) {
    const AxisPlace axis = m_scene->AxisAt(event.pos());
    if (axis.IsThere()) {
        emit axisMenuRequested(axis.pane, axis.scale, event.globalPos());
    } else {
        contextMenuEvent(&event);
    }
}

void ChartPage::OnWheel(const QWheelEvent& event) {
    QPointF notches = QPointF(event.angleDelta()) / kNotch;
    if (event.modifiers() & Qt::ShiftModifier) {
        notches = {notches.x() + notches.y(), 0};
    }
    PlotRange& range = m_scene->Range();
    if (notches.y() != 0) {
        range.Zoom(std::pow(kWheelStep, -notches.y()), Mapping().BarAt(event.position().x()));
    }
    range.Scroll(-notches.x() * range.Width() * kPanShare);
    Draw();
    if (FollowsMouse()) {
        PutCursorAt(event.position());
    }
}

void ChartPage::OnLeave() {
    if (FollowsMouse() && m_cursor.IsThere()) {
        m_cursor = {};
        DrawCursor();
    }
}

void ChartPage::PutCursorAt(const QPointF& position) {
    const PlotMapping mapping = Mapping();
    const bool inside = m_scene->PaneAndStudyAt(position).first >= 0 &&
                        position.x() >= mapping.left &&
                        position.x() <= mapping.left + mapping.width;
    if (!inside && !FollowsMouse()) {
        return;
    }
    m_cursor = {};
    if (inside) {
        // On a legend it has no level line.
        m_cursor = {mapping.NearestBarAt(position.x()), mapping.PaneAt(position.y()), position.y()};
    }
    DrawCursor();
}

void ChartPage::MoveCursorBy(int bars) {
    const int from = m_cursor.IsThere() ? m_cursor.bar : VisibleBars().second - bars;
    SetCursorBar(std::clamp(from + bars, 0, std::max(BarCount() - 1, 0)));
}

bool ChartPage::OnKey(int key, Qt::KeyboardModifiers modifiers) {
    PlotRange& range = m_scene->Range();
    const int step = key == Qt::Key_Left ? -1 : 1;
    switch (key) {
        case Qt::Key_Left:
        case Qt::Key_Right:
            if ((modifiers & Qt::ControlModifier) || !m_model->Options().bCursor) {
                range.Scroll(step * std::max(1.0, range.Width() * kPanShare));
                break;
            }
            MoveCursorBy(step);
            return true;
        case Qt::Key_Up:
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            ZoomIn();
            return true;
        case Qt::Key_Down:
        case Qt::Key_Minus:
            ZoomOut();
            return true;
        case Qt::Key_PageUp:
            range.Scroll(-range.Width() * kPageShare);
            break;
        case Qt::Key_PageDown:
            range.Scroll(range.Width() * kPageShare);
            break;
        case Qt::Key_Home:
            range.ScrollToFirst();
            break;
        case Qt::Key_End:
            range.ScrollToLatest();
            break;
        case Qt::Key_Escape:
            if (!m_cursor.IsThere()) {
                m_lastCursorBar = -1;
                return false;
            }
            SetCursorBar(-1);
            return true;
        default:
            return false;
    }
    m_keptDate.reset();  // also at the end of the bars, where nothing moves
    Draw();
    return true;
}

void ChartPage::contextMenuEvent(QContextMenuEvent* event) {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    emit menuRequested(menu);
    if (menu->isEmpty()) {
        delete menu;
        event->ignore();
        return;
    }
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    menu->popup(byMouse ? event->globalPos() : mapToGlobal(rect().center()));
}

void ChartPage::keyPressEvent(QKeyEvent* event) {
    if (!OnKey(event->key(), event->modifiers())) {
        QWidget::keyPressEvent(event);
    }
}

}  // namespace ta::terminal
