#include "terminal/store/CommittedRows.h"

#include <algorithm>
#include <utility>

namespace ta::terminal {

namespace {
// Small enough for memory that the process has already, which costs far less than new pages.
constexpr std::size_t kFirstBlock = 32 * 1024;
constexpr std::size_t kFirstRows = 256;
}  // namespace

CommittedRows::CommittedRows()
    : m_bytes(std::make_unique<std::pmr::monotonic_buffer_resource>(kFirstBlock)) {
    m_rows.reserve(kFirstRows);
}

bool CommittedRows::Append(const SettingKey& key, std::string_view value) {
    if (!m_rows.empty() && key <= m_rows.back().key) {
        return false;
    }
    // One after the other in one piece of memory.
    const std::size_t size = key.name.size() + key.sub.size() + value.size();
    char* place = static_cast<char*>(m_bytes->allocate(size, 1));
    const auto keep = [&place](std::string_view bytes) {
        return std::string_view(std::exchange(place, std::ranges::copy(bytes, place).out),
                                bytes.size());
    };
    m_rows.push_back({{key.kind, key.number, keep(key.name), keep(key.sub)}, keep(value)});
    return true;
}

std::optional<std::string_view> CommittedRows::Find(const SettingKey& key) const {
    if (m_next >= m_rows.size() || m_rows[m_next].key != key) {
        const auto row = std::ranges::lower_bound(m_rows, key, {}, &SettingRow::key);
        if (row == m_rows.end() || row->key != key) {
            return std::nullopt;
        }
        m_next = static_cast<std::size_t>(row - m_rows.begin());
    }
    return m_rows[m_next++].value;
}

}  // namespace ta::terminal
