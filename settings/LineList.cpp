#include "settings/LineList.h"

#include <algorithm>
#include <bit>
#include <functional>

namespace ta::settings {
namespace {

// Up to this many lines a look at each is cheaper than an index.
constexpr std::size_t kMostWithoutIndex = 32;

std::uint32_t HashOf(const CString& line) {
    return static_cast<std::uint32_t>(std::hash<CString>()(line));
}

}  // namespace

void LineList::Add(const CString& line) {
    if (m_lines.size() < kMostWithoutIndex) {
        if (std::ranges::find(m_lines, line) == m_lines.end()) {
            m_lines.push_back(line);
        }
        return;
    }
    if (m_slots.size() < 2 * (m_lines.size() + 1)) {
        MakeIndex();
    }
    const std::uint32_t hash = HashOf(line);
    std::uint32_t& slot = SlotOf(line, hash);
    if (slot == 0) {
        m_lines.push_back(line);
        m_hashes.push_back(hash);
        slot = static_cast<std::uint32_t>(m_lines.size());
    }
}

void LineList::MakeIndex() {
    for (std::size_t i = m_hashes.size(); i < m_lines.size(); ++i) {
        m_hashes.push_back(HashOf(m_lines[i]));
    }
    m_slots.assign(std::bit_ceil(4 * m_lines.size()), 0);
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        SlotOf(m_lines[i], m_hashes[i]) = static_cast<std::uint32_t>(i + 1);
    }
}

std::uint32_t& LineList::SlotOf(const CString& line, std::uint32_t hash) {
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t i = hash & mask;; i = (i + 1) & mask) {
        std::uint32_t& slot = m_slots[i];
        if (slot == 0 || (m_hashes[slot - 1] == hash && m_lines[slot - 1] == line)) {
            return slot;
        }
    }
}

}  // namespace ta::settings
