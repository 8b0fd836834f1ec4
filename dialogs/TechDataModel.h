#pragma once

#include "dialogs/TechDataTable.h"
#include "dialogs/TechDataTexts.h"

#include <QAbstractTableModel>

#include <cstddef>
#include <memory>

namespace ta::techdata {

/// The viewer's list for the toolkit: texts made when they are shown, no object for a row.
class TechDataModel : public QAbstractTableModel {
    Q_OBJECT

public:
    TechDataModel(Headers& headers, Records& records, QObject* parent);

    const TechDataTable& Table() const { return m_table; }
    const CellTexts& Cells() const { return *m_cells; }
    const WidestTexts& Widest() const { return m_widest; }

    /// Whose data they are, from here on and for the rows that are there.
    void SetSource(unsigned char market, const CString& symbol, int dataType);
    /// Asks the back-end and the language again.
    void RefreshCells();
    void SetHeaders(Headers& headers) { m_table.SetHeaders(headers); }
    void SetRecords(Records& records);

    /// Empties the list and gives it the headers' columns; it fills from the first record.
    void Restart();
    /// Empties the list and ends the fill.
    void Erase();
    /// Sees how wide the texts of the records' rows are, `first` to `last` without `last`, which
    /// need not be in the list yet.
    void NoteRows(std::size_t first, std::size_t last);
    /// Appends rows that were noted.
    void Append(std::size_t count);
    /// Ends the fill and appends the rows that have waited for it.
    void EndFill();
    /// The row that shows it now; -1 when the fill will bring it.
    int Insert(const OneRecord& record);
    bool Replace(std::size_t row, const OneRecord& record);
    /// The row that is marked, or -1 for none.
    void Mark(int row);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void TellOfRows(int first, int last);
    void NoteRecord(const OneRecord& record);

    TechDataTable m_table;
    std::unique_ptr<CellTexts> m_cells;
    WidestTexts m_widest;
    std::vector<CString> m_names;  ///< of the list's columns
    int m_marked = -1;
    unsigned char m_market = 0;
    CString m_symbol;
    int m_dataType = kDailyData;
};

}  // namespace ta::techdata
