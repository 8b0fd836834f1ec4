#include "terminal/store/ValueCodec.h"

#include <optional>

namespace ta::terminal {

void ValueWriter::Put(std::uint32_t value) {
    const char bytes[] = {static_cast<char>(value), static_cast<char>(value >> 8),
                          static_cast<char>(value >> 16), static_cast<char>(value >> 24)};
    m_bytes.append(bytes, sizeof bytes);
}

void ValueWriter::Put(const CString& text) {
    Put(static_cast<std::uint32_t>(text.size()));
    m_bytes += text;
}

bool ValueReader::Get(bool& value) {
    if (m_rest.empty() || static_cast<unsigned char>(m_rest.front()) > 1) {
        return false;
    }
    value = m_rest.front() != '\0';
    m_rest.remove_prefix(1);
    return true;
}

bool ValueReader::Get(std::int32_t& value) {
    std::uint32_t bits = 0;
    if (!Get(bits)) {
        return false;
    }
    value = static_cast<std::int32_t>(bits);
    return true;
}

bool ValueReader::Get(CString& text) {
    std::uint32_t length = 0;
    if (!Get(length) || length > m_rest.size()) {
        return false;
    }
    text.assign(m_rest.substr(0, length));
    m_rest.remove_prefix(length);
    return true;
}

bool ValueReader::SkipText() {
    std::uint32_t length = 0;
    if (!Get(length) || length > m_rest.size()) {
        return false;
    }
    m_rest.remove_prefix(length);
    return true;
}

namespace {

constexpr std::size_t kNumberSize = 4;

/// The number of texts when the bytes are a list of them and nothing else.
std::optional<std::uint32_t> TextCount(std::string_view bytes) {
    ValueReader reader(bytes);
    std::uint32_t count = 0;
    bool good = reader.Get(count);
    for (std::uint32_t i = 0; good && i < count; ++i) {
        good = reader.SkipText();
    }
    return good && reader.AtEnd() ? std::optional(count) : std::nullopt;
}

/// Reads a list of `count` elements, which are there, over those of `out`.
template <typename T>
void TakeList(std::string_view bytes, std::uint32_t count, std::vector<T>& out) {
    ValueReader reader(bytes.substr(kNumberSize));
    out.resize(count);
    for (T& element : out) {
        reader.Get(element);
    }
}

}  // namespace

bool DecodeValue(std::string_view bytes, std::vector<std::int32_t>& out) {
    ValueReader reader(bytes);
    std::uint32_t count = 0;
    if (!reader.Get(count) || bytes.size() != kNumberSize * (std::size_t{1} + count)) {
        return false;
    }
    TakeList(bytes, count, out);
    return true;
}

bool DecodeValue(std::string_view bytes, std::vector<CString>& out) {
    const std::optional<std::uint32_t> count = TextCount(bytes);
    if (count) {
        TakeList(bytes, *count, out);
    }
    return count.has_value();
}

}  // namespace ta::terminal
