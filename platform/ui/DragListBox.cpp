#include "platform/ui/DragListBox.h"

#include "platform/ui/PlainRows.h"
#include "platform/ui/Timers.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QSignalBlocker>

namespace ta::ui {
namespace {

constexpr int kScrollTimer = 1;
constexpr int kScrollMilliseconds = 60;  // a row

}  // namespace

DragListBox::DragListBox(QWidget* parent) : QListWidget(parent) {
    setSelectionMode(QAbstractItemView::SingleSelection);
    new PlainRows(*this);
}

void DragListBox::SetDragEnabled(bool enabled) {
    EndDrag(false);
    m_dragEnabled = enabled;
}

void DragListBox::mousePressEvent(QMouseEvent* event) {
    QListWidget::mousePressEvent(event);
    if (m_dragEnabled && event->button() == Qt::LeftButton) {
        m_pressed = event->position().toPoint();
        m_pressedRow = indexAt(m_pressed).row();
    }
}

void DragListBox::mouseMoveEvent(QMouseEvent* event) {
    if (m_pressedRow < 0 || !event->buttons().testFlag(Qt::LeftButton)) {
        QListWidget::mouseMoveEvent(event);
        return;
    }
    const QPoint position = event->position().toPoint();
    if (!IsDragging()) {
        if ((position - m_pressed).manhattanLength() < QApplication::startDragDistance()) {
            return;
        }
        m_draggedRow = m_pressedRow;
        viewport()->setCursor(Qt::ClosedHandCursor);
        CurrentTimers().Start(*this, kScrollTimer, kScrollMilliseconds, [this] {
            if (!viewport()->rect().contains(viewport()->rect().center().x(), m_position.y())) {
                DragTo(m_position);
            }
        });
    }
    DragTo(position);
}

void DragListBox::DragTo(const QPoint& position) {
    m_position = position;
    const int target = RowAt(position);
    MoveRow(m_draggedRow, target);
    m_draggedRow = target;
}

void DragListBox::mouseReleaseEvent(QMouseEvent* event) {
    QListWidget::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton) {
        EndDrag(true);
    }
}

void DragListBox::keyPressEvent(QKeyEvent* event) {
    const int row = currentRow();
    const int step = event->key() == Qt::Key_Up ? -1 : event->key() == Qt::Key_Down ? 1 : 0;
    const bool moves = step != 0 && event->modifiers().testFlag(Qt::ControlModifier);
    if (IsDragging()) {
        if (event->key() == Qt::Key_Escape) {
            EndDrag(false);
        }
    } else if (m_dragEnabled && moves && row >= 0) {
        if (row + step >= 0 && row + step < count()) {
            MoveRow(row, row + step);
            emit dragEnded();
        }
    } else {
        QListWidget::keyPressEvent(event);
    }
}

bool DragListBox::event(QEvent* event) {
    // While a row is dragged, Escape is the list's and must not close the dialog.
    if (event->type() == QEvent::ShortcutOverride && IsDragging()) {
        event->accept();
        return true;
    }
    return QListWidget::event(event);
}

QItemSelectionModel::SelectionFlags DragListBox::selectionCommand(const QModelIndex& index,
                                                                  const QEvent* event) const {
    // Ctrl+click would deselect the row and leave it the current one, a click below the rows too.
    const auto command = QListWidget::selectionCommand(index, event);
    if (command == QItemSelectionModel::NoUpdate || selectionMode() != SingleSelection) {
        return command;
    }
    return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

int DragListBox::RowAt(const QPoint& position) const {
    // Over the list's edges this is a row that is out of sight, and the list scrolls along.
    const int row = indexAt({viewport()->width() / 2, position.y()}).row();
    if (row >= 0) {
        return row;
    }
    return position.y() < 0 ? 0 : count() - 1;
}

void DragListBox::MoveRow(int from, int to) {
    if (from == to) {
        return;
    }
    // The row stays the current one: nobody is told of its neighbour, which is so in between.
    const QSignalBlocker quiet(this);
    insertItem(to, takeItem(from));
    setCurrentRow(to);
}

void DragListBox::EndDrag(bool keep) {
    const int from = m_pressedRow;
    const int to = m_draggedRow;
    const bool moved = IsDragging() && from != to;
    m_pressedRow = -1;
    m_draggedRow = -1;
    CurrentTimers().Stop(*this, kScrollTimer);
    viewport()->unsetCursor();
    if (!moved) {
        return;
    }
    if (keep) {
        emit dragEnded();
    } else {
        MoveRow(to, from);
    }
}

}  // namespace ta::ui
