#include "sheet/StudyTree.h"

#include "groupfile/GroupSummary.h"
#include "platform/ui/LangText.h"
#include "platform/ui/PlainRows.h"
#include "settings/Repository.h"

#include <QHeaderView>
#include <QSignalBlocker>
#include <QStyle>

#include <algorithm>

namespace ta::sheet {
namespace {

constexpr int kTypeRole = Qt::UserRole;

/// The number of panes to show: at least those of the show count.
int NodeCount(const StudyLists& lists, int showCount) {
    int count = std::clamp(showCount, 1, kPaneCount);
    for (int pane = count; pane < kPaneCount; ++pane) {
        if (lists[static_cast<std::size_t>(pane)].front() != kNoStudy) {
            count = pane + 1;
        }
    }
    return count;
}

}  // namespace

StudyTree::StudyTree(QWidget* parent) : QTreeWidget(parent), m_rows(*new ui::PlainRows(*this)) {
    setHeaderHidden(true);
    setColumnCount(1);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    header()->setSectionResizeMode(QHeaderView::Fixed);
    header()->setStretchLastSection(false);
}

// ---- Contents ----

void StudyTree::SetStudies(const StudyLists& lists, int showCount) {
    SetStudies(lists, showCount,
               m_lists.empty() ? Place() : PlaceAfter(m_lists, lists, CurrentPlace()));
}

void StudyTree::SetStudies(const StudyLists& lists, int showCount, Place place) {
    {
        const QSignalBlocker quiet(this);
        EndDrag(false);
        clear();
        m_lists = lists;
        m_showCount = showCount;
        const int count = std::max(NodeCount(lists, showCount), place.pane + 1);
        Labels labels;
        QList<QTreeWidgetItem*> nodes;
        for (int pane = 0; pane < count; ++pane) {
            nodes.append(NewNode(pane, labels));
        }
        addTopLevelItems(nodes);
        expandAll();
        MeasureTexts();
        Select(place);
    }
    emit currentItemChanged(currentItem(), nullptr);
}

QTreeWidgetItem* StudyTree::NewNode(int pane, Labels& labels) const {
    const bool shown = pane < m_showCount;
    const QString text =
        ui::LangText(shown ? "IDS_TADIALOGS-SHEET_PANE" : "IDS_TADIALOGS-SHEET_HIDDEN_PANE",
                     QString::number(pane + 1));
    auto* node = new QTreeWidgetItem(QStringList(text));
    for (int study = 0; study < StudyCount(m_lists, pane); ++study) {
        const StudyType type = StudyAt(m_lists, pane, study);
        QString& label = labels[type];
        if (label.isEmpty()) {
            label = groupfile::StudyLabel(Repository(), type);
        }
        auto* item = new QTreeWidgetItem(node, QStringList(label));
        item->setData(0, kTypeRole, type);
    }
    return node;
}

void StudyTree::SetFaulty(const std::set<StudyType>& types) {
    const QSignalBlocker quiet(this);
    const QString tip = ui::LangText("IDS_TADIALOGS-SHEET_STUDY_FAULTY");
    for (int pane = 0; pane < topLevelItemCount(); ++pane) {
        for (int study = 0; study < topLevelItem(pane)->childCount(); ++study) {
            QTreeWidgetItem& item = *topLevelItem(pane)->child(study);
            const bool faulty = types.contains(item.data(0, kTypeRole).toInt());
            if (faulty == !item.icon(0).isNull()) {
                continue;  // a change of an item makes the view measure all of them
            }
            item.setIcon(0, faulty ? style()->standardIcon(QStyle::SP_MessageBoxWarning) : QIcon());
            item.setToolTip(0, faulty ? tip : QString());
            item.setData(0, Qt::AccessibleDescriptionRole, faulty ? tip : QString());
        }
    }
    viewport()->update();
}

// ---- The current place ----

Place StudyTree::PlaceOf(const QTreeWidgetItem* item) const {
    if (item == nullptr) {
        return {};
    }
    const QTreeWidgetItem* node = item->parent() != nullptr ? item->parent() : item;
    return {indexFromItem(node).row(), node == item ? -1 : indexFromItem(item).row()};
}

StudyType StudyTree::CurrentType() const {
    const Place place = CurrentPlace();
    return m_lists.empty() ? kNoStudy : StudyAt(m_lists, place.pane, place.study);
}

void StudyTree::Select(Place place) {
    QTreeWidgetItem* node = topLevelItem(place.pane);
    QTreeWidgetItem* study = node == nullptr ? nullptr : node->child(place.study);
    // Also when it is null: else the tree would choose one when it gets the focus.
    setCurrentItem(study != nullptr ? study : node);
}

void StudyTree::SelectType(StudyType type) {
    for (int pane = 0; pane < topLevelItemCount(); ++pane) {
        for (int study = 0; study < topLevelItem(pane)->childCount(); ++study) {
            if (StudyAt(m_lists, pane, study) == type) {
                return Select({pane, study});
            }
        }
    }
}

bool StudyTree::CanMove(int by) const {
    const QTreeWidgetItem* item = currentItem();
    if (item == nullptr) {
        return false;
    }
    const QTreeWidgetItem* parent =
        item->parent() != nullptr ? item->parent() : invisibleRootItem();
    return parent->child(parent->indexOfChild(const_cast<QTreeWidgetItem*>(item)) + by) != nullptr;
}

// The toolkit's own fitting to the contents measures every text again at each layout.
void StudyTree::MeasureTexts() {
    int widest = 0;
    for (QTreeWidgetItemIterator item(this); *item != nullptr; ++item) {
        widest = std::max(widest, m_rows.WidthOf((*item)->text(0)));
    }
    const int iconWidth = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    m_textWidth = widest + 2 * indentation() + 2 * iconWidth;
    FitColumn();
}

void StudyTree::FitColumn() {
    // As wide as the tree, so that a row is hit anywhere; wider for a longer text.
    header()->resizeSection(0, std::max(m_textWidth, viewport()->width()));
}

void StudyTree::resizeEvent(QResizeEvent* event) {
    QTreeWidget::resizeEvent(event);
    FitColumn();
}

QSize StudyTree::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    return {metrics.horizontalAdvance('0') * 34, metrics.lineSpacing() * 18};
}

}  // namespace ta::sheet
