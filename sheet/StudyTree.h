#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <QBasicTimer>
#include <QTreeWidget>

#include <optional>
#include <set>
#include <vector>

namespace ta::sheet {

/// The studies of a group: one node per pane with its studies below. Shows the panes 1 to the show
/// count and, marked as not shown, those behind it up to the last one that holds a study.
class TADIALOGS_EXPORT StudyTree : public QTreeWidget {
    Q_OBJECT

public:
    explicit StudyTree(QWidget* parent = nullptr);

    /// Fills the tree and then signals the current item, once. The place that was selected stays
    /// so when it is still there, else the nearest one of its pane.
    void SetStudies(const std::vector<std::vector<StudyType>>& lists, int showCount);
    /// The lists in display order, 10 of 8 slots. A study whose text cannot be turned back into a
    /// type keeps the type with which it came.
    std::vector<std::vector<StudyType>> Studies() const;

    /// Pane (from 0) and study (from 0; -1 for the pane node) of the current item; both -1 without.
    int CurrentPane() const;
    int CurrentStudy() const;
    /// The type of the current item; kNoStudy when it is no study.
    StudyType CurrentType() const;
    /// Ignored when there is no such item.
    void Select(int pane, int study = -1);
    /// Selects the first item of a study; false when it is not there.
    bool SelectType(StudyType type);
    /// Exchanges the current item, study or pane, with its next (`by` 1) or previous (-1) sibling
    /// and keeps it current; the pane nodes are numbered again. false when there is no such
    /// sibling.
    bool MoveCurrent(int by);

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
    struct Place {
        int pane = -1;
        int study = -1;

        bool operator==(const Place&) const = default;
    };

    Place PlaceOf(const QTreeWidgetItem* item) const;
    Place DropPlaceAt(const QPoint& position) const;
    QRect DropMark() const;
    void DragTo(const QPoint& position);
    void EndDrag(bool drop);
    void AddPane(const std::vector<StudyType>& studies);
    void NumberPanes();
    void MeasureTexts();
    void FitColumn();
    StudyType TypeOf(const QTreeWidgetItem& item) const;

    int m_showCount = 0;
    int m_textWidth = 0;  ///< of the widest row
    bool m_dragEnabled = false;
    QPoint m_pressed;
    std::optional<Place> m_source;  ///< the study on which the mouse was pressed
    std::optional<Place> m_target;  ///< while it is dragged: where it would be dropped
    QBasicTimer m_scrolling;
};

}  // namespace ta::sheet
