// The study tree's drag with the mouse.

#include "sheet/StudyTree.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimerEvent>

#include <algorithm>

namespace ta::sheet {
namespace {

constexpr int kScrollMilliseconds = 60;

}  // namespace

void StudyTree::mousePressEvent(QMouseEvent* event) {
    QTreeWidget::mousePressEvent(event);
    const QPoint position = event->position().toPoint();
    const Place place = PlaceOf(itemAt(position));
    m_source.reset();
    if (m_dragEnabled && event->button() == Qt::LeftButton && place.study >= 0) {
        m_pressed = position;
        m_source = place;
    }
}

void StudyTree::mouseMoveEvent(QMouseEvent* event) {
    if (!m_source || !event->buttons().testFlag(Qt::LeftButton)) {
        QTreeWidget::mouseMoveEvent(event);
        return;
    }
    const QPoint position = event->position().toPoint();
    if (!IsDragging() &&
        (position - m_pressed).manhattanLength() < QApplication::startDragDistance()) {
        return;
    }
    viewport()->setCursor(Qt::ClosedHandCursor);
    DragTo(position);
}

void StudyTree::mouseReleaseEvent(QMouseEvent* event) {
    QTreeWidget::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton) {
        EndDrag(true);
    }
}

void StudyTree::keyPressEvent(QKeyEvent* event) {
    if (!IsDragging()) {
        QTreeWidget::keyPressEvent(event);
    } else if (event->key() == Qt::Key_Escape) {
        EndDrag(false);
    }
}

bool StudyTree::event(QEvent* event) {
    // While a study is dragged, every key is the tree's: Escape must not close the dialog.
    if (event->type() == QEvent::ShortcutOverride && IsDragging()) {
        event->accept();
        return true;
    }
    return QTreeWidget::event(event);
}

void StudyTree::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_scrolling.timerId()) {
        QTreeWidget::timerEvent(event);
        return;
    }
    const QPoint position = viewport()->mapFromGlobal(QCursor::pos());
    const int step = position.y() < 0 ? -1 : position.y() > viewport()->height() ? 1 : 0;
    verticalScrollBar()->setValue(verticalScrollBar()->value() + step);
    DragTo(position);
}

/// Above a study's middle: before it; below: behind it; on a pane: behind its last study.
Place StudyTree::DropPlaceAt(const QPoint& position) const {
    const int y = std::clamp(position.y(), 0, viewport()->height() - 1);
    const QTreeWidgetItem* item = itemAt(viewport()->width() / 2, y);
    if (item == nullptr) {
        item = topLevelItem(topLevelItemCount() - 1);
    }
    Place place = PlaceOf(item);
    if (place.study < 0) {
        place.study = item->childCount();
    } else if (y > visualItemRect(item).center().y()) {
        ++place.study;
    }
    return place;
}

/// The line between the two studies where the dragged one would stand.
QRect StudyTree::DropMark() const {
    const QTreeWidgetItem* node = topLevelItem(m_target->pane);
    const bool first = m_target->study == 0;
    const QRect above = visualItemRect(first ? node : node->child(m_target->study - 1));
    const int left = indentation();
    return {left, above.bottom(), viewport()->width() - left, 2};
}

void StudyTree::DragTo(const QPoint& position) {
    m_target = DropPlaceAt(position);
    if (viewport()->rect().contains(position)) {
        m_scrolling.stop();
    } else if (!m_scrolling.isActive()) {
        m_scrolling.start(kScrollMilliseconds, this);
    }
    viewport()->update();
}

void StudyTree::EndDrag(bool drop) {
    const auto source = std::exchange(m_source, std::nullopt);
    const auto target = std::exchange(m_target, std::nullopt);
    m_scrolling.stop();
    viewport()->unsetCursor();
    viewport()->update();
    if (drop && source && target) {
        emit studyDropped(source->pane, source->study, target->pane, target->study);
    }
}

void StudyTree::paintEvent(QPaintEvent* event) {
    QTreeWidget::paintEvent(event);
    if (IsDragging()) {
        QPainter(viewport()).fillRect(DropMark(), palette().highlight());
    }
}

}  // namespace ta::sheet
