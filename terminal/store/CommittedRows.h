#pragma once

#include "terminal/store/SettingKey.h"

#include <cstdint>
#include <memory>
#include <memory_resource>
#include <optional>
#include <vector>

namespace ta::terminal {

/// The rows of the file as one commit left them, in key order, with the counter of that commit.
class CommittedRows {
public:
    CommittedRows();

    /// Appends a row, copying its bytes. Returns false, and appends nothing, when its key is not
    /// greater than the last one.
    bool Append(const SettingKey& key, std::string_view value);

    /// The value's bytes, valid as long as this object; nothing when there is no such row.
    std::optional<std::string_view> Find(const SettingKey& key) const;

    const std::vector<SettingRow>& Rows() const { return m_rows; }

    std::uint32_t Counter() const { return m_counter; }
    void SetCounter(std::uint32_t counter) { m_counter = counter; }

private:
    std::unique_ptr<std::pmr::monotonic_buffer_resource> m_bytes;
    std::vector<SettingRow> m_rows;
    mutable std::size_t m_next = 0;  ///< the row after the one found last, which is often next
    std::uint32_t m_counter = 0;
};

}  // namespace ta::terminal
