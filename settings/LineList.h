#pragma once

#include "platform/Types.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace ta::settings {

/// The lines of one type key, in order, none twice unless it was given so at first. Adding looks
/// for an equal line in constant time, so that a hundred thousand lines can be added one by one.
class LineList {
public:
    LineList() = default;
    explicit LineList(std::vector<CString> lines) : m_lines(std::move(lines)) {}

    const std::vector<CString>& Lines() const { return m_lines; }
    /// Appends the line unless an equal one is there.
    void Add(const CString& line);

private:
    void MakeIndex();
    /// The slot of an equal line, else a free one.
    std::uint32_t& SlotOf(const CString& line, std::uint32_t hash);

    std::vector<CString> m_lines;

    // The index, empty at first: a line stands in the first slot from its hash on that was free.
    std::vector<std::uint32_t> m_hashes;  ///< of each line
    std::vector<std::uint32_t> m_slots;   ///< numbers of lines from 1, 0 free; at most half in use
};

}  // namespace ta::settings
