#include "dialogs/TechDataModel.h"

#include "platform/ui/TextBridge.h"

#include <QGuiApplication>
#include <QPalette>

namespace ta::techdata {

TechDataModel::TechDataModel(Headers& headers, Records& records, QObject* parent)
    : QAbstractTableModel(parent), m_table(headers, records) {
    RefreshCells();
}

void TechDataModel::SetSource(unsigned char market, const CString& symbol, int dataType) {
    m_market = market;
    m_symbol = symbol;
    m_dataType = dataType;
    RefreshCells();
}

void TechDataModel::RefreshCells() {
    m_cells = std::make_unique<CellTexts>(m_market, m_symbol, m_dataType);
    if (m_table.RowCount() > 0 && !m_names.empty()) {
        TellOfRows(0, rowCount() - 1);
    }
}

void TechDataModel::TellOfRows(int first, int last) {
    emit dataChanged(index(first, 0), index(last, columnCount() - 1));
}

void TechDataModel::SetRecords(Records& records) {
    m_table.SetRecords(records);
    RefreshCells();
}

void TechDataModel::Restart() {
    beginResetModel();
    m_table.Restart();
    m_widest.Clear();
    m_names.clear();
    m_marked = -1;
    for (const HeaderInfo& header : m_table.GetHeaders()) {
        m_names.push_back(header.name);
    }
    endResetModel();
}

void TechDataModel::Erase() {
    beginResetModel();
    m_table.Erase();
    m_widest.Clear();
    m_marked = -1;
    endResetModel();
}

void TechDataModel::NoteRecord(const OneRecord& record) {
    CString text;
    for (std::size_t column = 0; column < m_names.size(); ++column) {
        text.clear();
        m_cells->AppendCell(text, &record, m_table.GetHeaders(), column);
        m_widest.Note(column, text);
    }
}

void TechDataModel::NoteRows(std::size_t first, std::size_t last) {
    for (std::size_t row = first; row < last; ++row) {
        NoteRecord(m_table.GetRecords()[row]);
    }
}

void TechDataModel::Append(std::size_t count) {
    if (count > 0) {
        beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(count) - 1);
        m_table.Grow(count);
        endInsertRows();
    }
}

void TechDataModel::EndFill() {
    Append(m_table.EndFill());
}

int TechDataModel::Insert(const OneRecord& record) {
    NoteRecord(record);
    const auto row = m_table.Insert(record);
    if (row == m_table.RowCount()) {
        Append(1);
    } else if (row) {
        TellOfRows(0, rowCount() - 1);
    }
    return row ? static_cast<int>(*row) : -1;
}

bool TechDataModel::Replace(std::size_t row, const OneRecord& record) {
    if (!m_table.Replace(row, record)) {
        return false;
    }
    if (row < m_table.RowCount()) {
        NoteRecord(record);
        TellOfRows(static_cast<int>(row), static_cast<int>(row));
    }
    return true;
}

void TechDataModel::Mark(int row) {
    for (const int changed : {std::exchange(m_marked, row), row}) {
        if (changed >= 0 && changed < rowCount()) {
            TellOfRows(changed, changed);
        }
    }
}

int TechDataModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_table.RowCount());
}

int TechDataModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_names.size());
}

QVariant TechDataModel::data(const QModelIndex& index, int role) const {
    if (role == Qt::DisplayRole) {
        CString text;
        m_cells->AppendCell(text, m_table.Record(static_cast<std::size_t>(index.row())),
                            m_table.GetHeaders(), static_cast<std::size_t>(index.column()));
        return ui::ToQString(text);
    }
    if (role == Qt::TextAlignmentRole && index.column() > 0) {
        return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
    }
    if (role == Qt::BackgroundRole && index.row() == m_marked) {
        return QGuiApplication::palette().brush(QPalette::Midlight);
    }
    return {};
}

QVariant TechDataModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const bool isText = role == Qt::DisplayRole || role == Qt::ToolTipRole;
    const bool isName =
        orientation == Qt::Horizontal && isText && section >= 0 && section < columnCount();
    return isName ? ui::ToQString(m_names[static_cast<std::size_t>(section)]) : QVariant();
}

}  // namespace ta::techdata
