#pragma once

#include "platform/Export.h"
#include "sheet/PaneLists.h"

#include <QBasicTimer>
#include <QHash>
#include <QTreeWidget>

#include <optional>
#include <set>
#include <vector>

namespace ta::ui {
class PlainRows;
}

namespace ta::sheet {

/// The studies of a group: one node per pane with its studies below. Shows the panes 1 to the show
/// count and, marked as not shown, those behind it up to the last one that holds a study.
class TADIALOGS_EXPORT StudyTree : public QTreeWidget {
    Q_OBJECT

public:
    explicit StudyTree(QWidget* parent = nullptr);

    /// Fills the tree with 10 lists of 8 slots and then signals the current item, once. The study
    /// that was selected stays so where it is now; see PlaceAfter.
    void SetStudies(const StudyLists& lists, int showCount);
    /// The same with a place to select; its pane gets a node also behind the last one shown. The
    /// pane itself where it has no such study; nothing without a pane.
    void SetStudies(const StudyLists& lists, int showCount, Place place);
    /// What the tree was filled with; empty at first.
    const StudyLists& Studies() const { return m_lists; }

    /// The current item's place and type; kNoStudy when it is no study.
    Place CurrentPlace() const { return PlaceOf(currentItem()); }
    StudyType CurrentType() const;
    /// Selects the first item of a study, if there is one.
    void SelectType(StudyType type);
    /// Whether the current item has a next (`by` 1) or previous (-1) sibling.
    bool CanMove(int by) const;

    /// Marks the items of these studies, and no others, with a warning.
    void SetFaulty(const std::set<StudyType>& types);
    /// Whether studies can be dragged with the mouse. Off at first. The tree only tells where the
    /// study was dropped.
    void SetDragEnabled(bool enabled) { m_dragEnabled = enabled; }
    bool IsDragging() const { return m_target.has_value(); }

    QSize sizeHint() const override;

signals:
    /// A study was dropped before the study `toStudy` of the pane `toPane`, which may be the number
    /// of its studies: behind the last.
    void studyDropped(int pane, int study, int toPane, int toStudy);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    Place PlaceOf(const QTreeWidgetItem* item) const;
    Place DropPlaceAt(const QPoint& position) const;
    QRect DropMark() const;
    void DragTo(const QPoint& position);
    void EndDrag(bool drop);
    using Labels = QHash<StudyType, QString>;
    QTreeWidgetItem* NewNode(int pane, Labels& labels) const;
    void Select(Place place);
    void MeasureTexts();
    void FitColumn();

    ui::PlainRows& m_rows;
    StudyLists m_lists;
    int m_showCount = 0;
    int m_textWidth = 0;  ///< of the widest row
    bool m_dragEnabled = false;
    QPoint m_pressed;
    std::optional<Place> m_source;  ///< the study on which the mouse was pressed
    std::optional<Place> m_target;  ///< while it is dragged: where it would be dropped
    QBasicTimer m_scrolling;
};

}  // namespace ta::sheet
