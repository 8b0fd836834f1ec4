#include "sheet/GroupRows.h"

#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"

#include <QListWidget>

namespace ta::sheet {
namespace {

constexpr int kNameRole = Qt::UserRole;
constexpr int kUniNumRole = Qt::UserRole + 1;

}  // namespace

bool IsFull(std::size_t count, int maximum) {
    return maximum >= 0 && count >= static_cast<std::size_t>(maximum);
}

void FillGroupRows(QListWidget& list) {
    list.clear();
    for (const CString& name : GroupNames()) {
        auto* row = new QListWidgetItem(ui::ToQString(name));
        row->setData(kNameRole, QByteArray::fromStdString(name));
        row->setData(kUniNumRole, Repository().GetUniNumByGroupName(name));
        list.addItem(row);  // as it is, of which the list is told once
    }
}

bool HasLongRow(const QListWidget& list, int characters) {
    int row = 0;
    while (row < list.count() && list.item(row)->text().size() <= characters) {
        ++row;
    }
    return row < list.count();
}

CString NameOfRow(const QListWidgetItem& row) {
    return row.data(kNameRole).toByteArray().toStdString();
}

int UniNumOfRow(const QListWidgetItem& row) {
    return row.data(kUniNumRole).toInt();
}

std::vector<CString> NamesOfRows(const QListWidget& list) {
    std::vector<CString> names;
    names.reserve(static_cast<std::size_t>(list.count()));
    for (int row = 0; row < list.count(); ++row) {
        names.push_back(NameOfRow(*list.item(row)));
    }
    return names;
}

int RowOf(const QListWidget& list, const CString& name) {
    for (int row = 0; row < list.count(); ++row) {
        if (NameOfRow(*list.item(row)) == name) {
            return row;
        }
    }
    return list.count() > 0 ? 0 : -1;
}

}  // namespace ta::sheet
