#pragma once

#include "dialogs/TechData.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace ta::techdata {

/// What the viewer's list shows: rows over the owner's records, which come in batch by batch, and
/// behind them copies of the bars that the owner has shown without having them in his vector. Owns
/// neither vector; every access looks first how much they hold at that moment.
class TechDataTable {
public:
    /// The list is empty and filling.
    TechDataTable(Headers& headers, Records& records);

    const Headers& GetHeaders() const { return *m_headers; }
    const Records& GetRecords() const { return *m_records; }
    /// The list shows another vector from here on; its rows stay as many as they are.
    void SetHeaders(Headers& headers);
    void SetRecords(Records& records);

    std::size_t RowCount() const { return m_rows; }
    /// The record of a row; null for a row beyond what there is now. Good until the owner changes
    /// his vector or another operation is called.
    const OneRecord* Record(std::size_t row) const;
    /// The same in the list as it will be when it is full.
    const OneRecord* RecordToCome(std::size_t row) const;
    /// The first row of the full list at or behind a time; behind the last record when there is
    /// none. The records are in the order of their times.
    std::size_t RowFrom(double time) const;
    /// The full list's first row of a day (since 1970-01-01), or else the last one before that day;
    /// nothing for a day before the first record's or behind the last one's.
    std::optional<std::size_t> RowOfDay(long day) const;
    /// How often the list was emptied or got another vector: a pass over its rows that sees the
    /// number change goes over other rows than it began with.
    unsigned Generation() const { return m_generation; }

    /// Empties the list, to be filled from the first record.
    void Restart();
    /// Empties the list, which stays so: what the owner inserts comes in, his records do not.
    void Erase();
    bool IsFilling() const { return m_filling; }
    /// How many of the owner's records are not in the list yet; 0 when the list is as long as the
    /// records, or longer.
    std::size_t Missing() const;
    /// Ends the fill. Returns how many inserted rows waited for it and are now to be added.
    std::size_t EndFill();
    /// The list has `count` rows more.
    void Grow(std::size_t count) { m_rows += count; }

    /// Takes a new last row, which the owner may have appended to his records or not. Returns the
    /// row; nothing while the fill is on, which brings it. It is the one behind the last row, to be
    /// added now, or one of the list's when the owner has dropped records: the list's rows are
    /// others then.
    std::optional<std::size_t> Insert(const OneRecord& record);
    /// Puts the record into the owner's vector, and into the row that shows it. false, and nothing
    /// changes, for an index beyond the vector or a record that does not fit the headers.
    bool Replace(std::size_t row, const OneRecord& record);

private:
    void Empty(bool fill);
    bool IsInRecords(const OneRecord& record, std::size_t from) const;
    /// Where the owner has a record that he has appended since the list took one from him.
    std::optional<std::size_t> RowOfAppended(const OneRecord& record) const;
    bool IsOwn(std::size_t row) const;

    Headers* m_headers;
    Records* m_records;
    std::size_t m_rows = 0;
    bool m_filling = true;
    unsigned m_generation = 0;
    Records m_own;                 ///< the rows behind those of the owner's records
    std::size_t m_firstOwn = 0;    ///< the row of the first one; of no meaning while filling
    std::size_t m_insertedAt = 0;  ///< how many records there were when the first one came
    OneRecord m_last;              ///< the newest of the owner's records that the list has taken
};

}  // namespace ta::techdata
