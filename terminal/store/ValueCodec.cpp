#include "terminal/store/ValueCodec.h"

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

bool ValueReader::Get(std::uint32_t& value) {
    if (m_rest.size() < 4) {
        return false;
    }
    value = 0;
    for (unsigned i = 0; i < 4; ++i) {
        value |= static_cast<std::uint32_t>(static_cast<unsigned char>(m_rest[i])) << (8 * i);
    }
    m_rest.remove_prefix(4);
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

}  // namespace ta::terminal
