#pragma once

#include "platform/Types.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// How values become the bytes of a stored row: a flag is one byte (0 or 1), a number 4 bytes,
/// little-endian; a text its length as a number and its bytes; a pair its parts in order; a list
/// the count of its elements as a number and the elements.
namespace ta::terminal {

class ValueWriter {
public:
    ValueWriter() { m_bytes.reserve(1024); }

    void Put(bool value) { m_bytes.push_back(value ? '\1' : '\0'); }
    void Put(std::uint32_t value);
    void Put(std::int32_t value) { Put(static_cast<std::uint32_t>(value)); }
    void Put(const CString& text);

    template <typename A, typename B>
    void Put(const std::pair<A, B>& pair) {
        Put(pair.first);
        Put(pair.second);
    }
    template <typename T>
    void Put(const std::vector<T>& list) {
        Put(static_cast<std::uint32_t>(list.size()));
        for (const T& element : list) {
            Put(element);
        }
    }

    const std::string& Bytes() const { return m_bytes; }

private:
    std::string m_bytes;
};

/// Reads what ValueWriter wrote. Every Get returns false, and leaves an output half read at most,
/// when the bytes are not a value of that type.
class ValueReader {
public:
    explicit ValueReader(std::string_view bytes) : m_rest(bytes) {}

    bool Get(bool& value);
    bool Get(std::uint32_t& value) {
        if (m_rest.size() < 4) {
            return false;
        }
        value = ByteAt(0) | ByteAt(1) << 8 | ByteAt(2) << 16 | ByteAt(3) << 24;
        m_rest.remove_prefix(4);
        return true;
    }
    bool Get(std::int32_t& value);
    bool Get(CString& text);
    /// Passes over a text.
    bool SkipText();

    template <typename A, typename B>
    bool Get(std::pair<A, B>& pair) {
        return Get(pair.first) && Get(pair.second);
    }
    template <typename T>
    bool Get(std::vector<T>& list) {
        std::uint32_t count = 0;
        // Every element has 4 bytes at least, so a wild count is seen before memory is asked for.
        if (!Get(count) || count > m_rest.size() / 4) {
            return false;
        }
        list.clear();
        list.reserve(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            if (!Get(list.emplace_back())) {
                return false;
            }
        }
        return true;
    }

    bool AtEnd() const { return m_rest.empty(); }

private:
    std::uint32_t ByteAt(std::size_t place) const {
        return static_cast<unsigned char>(m_rest[place]);
    }

    std::string_view m_rest;
};

/// False, and `out` as it was, when the bytes are not exactly one value of this type.
template <typename T>
bool DecodeValue(std::string_view bytes, T& out) {
    ValueReader reader(bytes);
    T value{};
    if (!reader.Get(value) || !reader.AtEnd()) {
        return false;
    }
    out = std::move(value);
    return true;
}

/// The same for the longest lists, in the memory that `out` has already.
bool DecodeValue(std::string_view bytes, std::vector<std::int32_t>& out);
bool DecodeValue(std::string_view bytes, std::vector<CString>& out);

}  // namespace ta::terminal
