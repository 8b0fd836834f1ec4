#include "dialogs/TechDataTable.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <functional>

namespace ta::techdata {
namespace {

bool SameBits(double left, double right) {
    return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right);
}

/// The same bar: not-a-number is equal to itself here.
bool Same(const OneRecord& left, const OneRecord& right) {
    return SameBits(left.time, right.time) &&
           std::ranges::equal(left.values, right.values, SameBits);
}

}  // namespace

TechDataTable::TechDataTable(Headers& headers, Records& records)
    : m_headers(&headers), m_records(&records) {}

void TechDataTable::SetHeaders(Headers& headers) {
    m_headers = &headers;
    ++m_generation;
}

void TechDataTable::SetRecords(Records& records) {
    m_records = &records;
    ++m_generation;
}

bool TechDataTable::IsOwn(std::size_t row) const {
    return !m_filling && row >= m_firstOwn && row - m_firstOwn < m_own.size();
}

const OneRecord* TechDataTable::Record(std::size_t row) const {
    return row < m_rows ? RecordToCome(row) : nullptr;
}

const OneRecord* TechDataTable::RecordToCome(std::size_t row) const {
    if (IsOwn(row)) {
        return &m_own[row - m_firstOwn];
    }
    const bool isThere = row < m_records->size() && (m_filling || row < m_rows);
    return isThere ? &(*m_records)[row] : nullptr;
}

std::size_t TechDataTable::RowFrom(double time) const {
    std::size_t first = 0;
    std::size_t last = m_filling ? std::max(m_rows, m_records->size()) : m_rows;
    while (first < last) {
        const std::size_t middle = first + (last - first) / 2;
        const OneRecord* const record = RecordToCome(middle);
        const bool isBefore = record != nullptr && record->time < time;
        (isBefore ? first : last) = isBefore ? middle + 1 : middle;
    }
    return first;
}

std::optional<std::size_t> TechDataTable::RowOfDay(long day) const {
    const std::size_t row = RowFrom(static_cast<double>(day));
    const OneRecord* const record = RecordToCome(row);
    if (record != nullptr && std::floor(record->time) == static_cast<double>(day)) {
        return row;
    }
    const bool isInside = row > 0 && record != nullptr;
    return isInside ? std::optional(row - 1) : std::nullopt;
}

void TechDataTable::Empty(bool fill) {
    m_rows = 0;
    m_filling = fill;
    m_own.clear();
    m_firstOwn = 0;
    ++m_generation;
}

void TechDataTable::Restart() {
    Empty(true);
}

void TechDataTable::Erase() {
    Empty(false);
}

std::size_t TechDataTable::Missing() const {
    return m_records->size() - std::min(m_rows, m_records->size());
}

std::size_t TechDataTable::EndFill() {
    if (!m_filling) {
        return 0;
    }
    m_filling = false;
    m_firstOwn = m_rows;
    m_last = m_records->empty() ? OneRecord() : m_records->back();
    std::erase_if(m_own, [this](const OneRecord& own) { return IsInRecords(own, m_insertedAt); });
    return m_own.size();
}

bool TechDataTable::IsInRecords(const OneRecord& record, std::size_t from) const {
    const auto first = m_records->rbegin();
    const auto last =
        m_records->rend() - static_cast<std::ptrdiff_t>(std::min(from, m_records->size()));
    return std::any_of(first, last, [&](const OneRecord& known) { return Same(known, record); });
}

std::optional<std::size_t> TechDataTable::RowOfAppended(const OneRecord& record) const {
    if (m_rows < m_records->size() && Same((*m_records)[m_rows], record)) {
        return m_rows;
    }
    const auto known = std::find_if(
        m_records->rbegin(), m_records->rend(),
        [&](const OneRecord& other) { return Same(other, m_last) || Same(other, record); });
    const auto row = static_cast<std::size_t>(m_records->rend() - known);  // counted from 1
    const bool isAppended = row > 0 && row <= m_rows && !Same(*known, m_last);
    return isAppended ? std::optional(row - 1) : std::nullopt;
}

std::optional<std::size_t> TechDataTable::Insert(const OneRecord& record) {
    if (m_own.empty()) {
        if (m_filling && IsInRecords(record, m_rows)) {
            return {};
        }
        if (const auto row = m_filling ? std::nullopt : RowOfAppended(record)) {
            m_last = record;
            m_generation += *row < m_rows ? 1 : 0;
            return row;
        }
        m_firstOwn = m_rows;
        m_insertedAt = m_records->size();
    }
    m_own.push_back(record);
    return m_filling ? std::nullopt : std::optional(m_rows);
}

bool TechDataTable::Replace(std::size_t row, const OneRecord& record) {
    if (row >= m_records->size() || !Fits(record, *m_headers)) {
        return false;
    }
    OneRecord& known = (*m_records)[row];
    if (Same(known, m_last)) {
        m_last = record;
    }
    known = record;
    if (IsOwn(row)) {
        m_own[row - m_firstOwn] = record;
    }
    return true;
}

}  // namespace ta::techdata
