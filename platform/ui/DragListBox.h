#pragma once

#include "platform/Export.h"

#include <QListWidget>

namespace ta::ui {

/// A list whose rows the user can put into another order: by dragging a row with the mouse, which
/// moves along (Escape puts it back), or with Ctrl+Up and Ctrl+Down. A row's data move with it.
/// While the mouse stays above or below the list, the row moves on and the list scrolls. The
/// current row is always the selected one.
class TADIALOGS_EXPORT DragListBox : public QListWidget {
    Q_OBJECT

public:
    explicit DragListBox(QWidget* parent = nullptr);

    /// Off, it is a plain list. On at first.
    void SetDragEnabled(bool enabled);
    bool IsDragEnabled() const { return m_dragEnabled; }

signals:
    /// The user has moved a row and let go of it.
    void dragEnded();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(
        const QModelIndex& index, const QEvent* event = nullptr) const override;

private:
    int RowAt(const QPoint& position) const;
    void DragTo(const QPoint& position);
    void MoveRow(int from, int to);
    bool IsDragging() const { return m_draggedRow >= 0; }
    void EndDrag(bool keep);

    bool m_dragEnabled = true;
    QPoint m_pressed;
    QPoint m_position;      ///< of the mouse, while a row is dragged
    int m_pressedRow = -1;  ///< where the dragged row came from
    int m_draggedRow = -1;  ///< where it is now; -1 while nothing is dragged
};

}  // namespace ta::ui
