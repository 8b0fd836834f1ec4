#include "sheet/StudyTree.h"

#include "platform/ui/DialogBase.h"
#include "platform/ui/TextBridge.h"
#include "settings/StudyLists.h"
#include "settings/TaSettingHandle.h"
#include "sheet/StudyFacts.h"

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

StudyTree::StudyTree(QWidget* parent) : QTreeWidget(parent) {
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

void StudyTree::SetStudies(const std::vector<std::vector<StudyType>>& lists, int showCount) {
    const Place place = PlaceOf(currentItem());
    {
        const QSignalBlocker quiet(this);
        EndDrag(false);
        clear();
        m_showCount = showCount;
        const StudyLists packed = settings::PackStudyLists(lists);
        for (int pane = 0; pane < NodeCount(packed, showCount); ++pane) {
            AddPane(packed[static_cast<std::size_t>(pane)]);
        }
        NumberPanes();
        expandAll();
        MeasureTexts();
        if (const QTreeWidgetItem* node = topLevelItem(place.pane)) {
            Select(place.pane, std::min(place.study, node->childCount() - 1));
        }
    }
    emit currentItemChanged(currentItem(), nullptr);
}

void StudyTree::AddPane(const std::vector<StudyType>& studies) {
    auto* node = new QTreeWidgetItem(this);
    for (const StudyType type : studies) {
        if (type != kNoStudy) {
            auto* item = new QTreeWidgetItem(node, {StudyLabel(type)});
            item->setData(0, kTypeRole, type);
        }
    }
}

void StudyTree::NumberPanes() {
    for (int pane = 0; pane < topLevelItemCount(); ++pane) {
        const bool shown = pane < m_showCount;
        topLevelItem(pane)->setText(
            0, ui::LangText(shown ? "IDS_TADIALOGS-SHEET_PANE" : "IDS_TADIALOGS-SHEET_HIDDEN_PANE",
                            QString::number(pane + 1)));
    }
}

std::vector<std::vector<StudyType>> StudyTree::Studies() const {
    StudyLists lists;
    settings::InitStudyType(lists);
    for (int pane = 0; pane < topLevelItemCount(); ++pane) {
        const QTreeWidgetItem& node = *topLevelItem(pane);
        for (int study = 0; study < node.childCount(); ++study) {
            lists[static_cast<std::size_t>(pane)][static_cast<std::size_t>(study)] =
                TypeOf(*node.child(study));
        }
    }
    return lists;
}

StudyType StudyTree::TypeOf(const QTreeWidgetItem& item) const {
    CTaSettingHandle& repository = CTaSettingHandle::GetInstance();
    const CString name = ui::FromQString(item.text(0));
    const StudyType named = repository.StudyNameToStudyType(name);
    return repository.StudyTypeToStudyName(named) == name ? named : item.data(0, kTypeRole).toInt();
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

StudyTree::Place StudyTree::PlaceOf(const QTreeWidgetItem* item) const {
    if (item == nullptr) {
        return {};
    }
    const QTreeWidgetItem* node = item->parent() != nullptr ? item->parent() : item;
    return {indexFromItem(node).row(), node == item ? -1 : indexFromItem(item).row()};
}

int StudyTree::CurrentPane() const {
    return PlaceOf(currentItem()).pane;
}

int StudyTree::CurrentStudy() const {
    return PlaceOf(currentItem()).study;
}

StudyType StudyTree::CurrentType() const {
    return CurrentStudy() < 0 ? kNoStudy : currentItem()->data(0, kTypeRole).toInt();
}

void StudyTree::Select(int pane, int study) {
    QTreeWidgetItem* node = topLevelItem(pane);
    QTreeWidgetItem* item = node == nullptr || study < 0 ? node : node->child(study);
    if (item != nullptr) {
        setCurrentItem(item);
    }
}

bool StudyTree::SelectType(StudyType type) {
    for (int pane = 0; pane < topLevelItemCount(); ++pane) {
        for (int study = 0; study < topLevelItem(pane)->childCount(); ++study) {
            if (topLevelItem(pane)->child(study)->data(0, kTypeRole).toInt() == type) {
                Select(pane, study);
                return true;
            }
        }
    }
    return false;
}

bool StudyTree::MoveCurrent(int by) {
    QTreeWidgetItem* item = currentItem();
    if (item == nullptr) {
        return false;
    }
    QTreeWidgetItem* parent = item->parent() != nullptr ? item->parent() : invisibleRootItem();
    const int from = parent->indexOfChild(item);
    const int to = from + by;
    if (to < 0 || to >= parent->childCount()) {
        return false;
    }
    {
        const QSignalBlocker quiet(this);
        parent->takeChild(from);
        parent->insertChild(to, item);
        NumberPanes();
        expandAll();
        setCurrentItem(item);
    }
    emit currentItemChanged(item, nullptr);
    return true;
}

// The toolkit's own fitting to the contents measures every text again at each layout.
void StudyTree::MeasureTexts() {
    int widest = 0;
    for (QTreeWidgetItemIterator item(this); *item != nullptr; ++item) {
        widest = std::max(widest, fontMetrics().horizontalAdvance((*item)->text(0)));
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
