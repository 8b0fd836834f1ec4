#include "platform/ui/CheckList.h"

#include <QHeaderView>
#include <QStyle>
#include <QStyledItemDelegate>

#include <algorithm>

namespace ta::ui {
namespace {

constexpr int kCheckColumn = 0;
constexpr int kCheckColumnWidth = 20;

/// Styles take the outline of check boxes from the window colour, which is as dark as a dark list.
class CheckBoxDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->palette.setColor(QPalette::Window, option->palette.color(QPalette::Text));
    }
};

int RowHeight(const QWidget& list) {
    constexpr int kMargins = 4;
    const QFontMetrics metrics(list.font());
    const int text = std::max(metrics.height(), metrics.boundingRect("Áy國").height());
    return std::max(text, list.style()->pixelMetric(QStyle::PM_IndicatorHeight)) + kMargins;
}

}  // namespace

void OutlineCheckBoxes(QAbstractItemView& view, int column) {
    view.setItemDelegateForColumn(column, new CheckBoxDelegate(&view));
}

CheckList::CheckList(QWidget* parent) : QTableWidget(parent) {
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setTabKeyNavigation(false);
    setWordWrap(false);
    verticalHeader()->hide();
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setMinimumSectionSize(kCheckColumnWidth);
    OutlineCheckBoxes(*this, kCheckColumn);
    connect(this, &QTableWidget::currentCellChanged, this,
            [this](int row) { setCurrentCell(row, kCheckColumn); });
}

void CheckList::SetRows(const std::vector<QStringList>& rows) {
    setRowCount(0);
    setRowCount(static_cast<int>(rows.size()));
    for (int row = 0; row < rowCount(); ++row) {
        auto* check = new QTableWidgetItem;
        check->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        check->setCheckState(Qt::Unchecked);
        setItem(row, kCheckColumn, check);
        const QStringList& texts = rows[static_cast<std::size_t>(row)];
        for (int i = 0; i < std::min<int>(texts.size(), columnCount() - 1); ++i) {
            setItem(row, i + 1, new QTableWidgetItem(texts[i]));
        }
    }
    setColumnWidth(kCheckColumn, kCheckColumnWidth);
    // One height for all, which has room for every script: to measure each cell takes far longer.
    verticalHeader()->setDefaultSectionSize(RowHeight(*this));
}

void CheckList::CheckAll(bool checked) {
    for (int row = 0; row < rowCount(); ++row) {
        item(row, kCheckColumn)->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
    }
}

bool CheckList::IsChecked(int row) const {
    const QTableWidgetItem* check = item(row, kCheckColumn);
    return check != nullptr && check->checkState() == Qt::Checked;
}

std::vector<int> CheckList::CheckedRows() const {
    std::vector<int> rows;
    for (int row = 0; row < rowCount(); ++row) {
        if (IsChecked(row)) {
            rows.push_back(row);
        }
    }
    return rows;
}

}  // namespace ta::ui
