#include "platform/ProfileFile.h"

#include "platform/Text.h"
#include "platform/TextBytes.h"

#include <algorithm>
#include <cstdint>

namespace ta {
namespace {

constexpr std::string_view kUtf16Mark = "\xFF\xFE";

std::string_view Unquote(std::string_view value) {
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

CString FromUtf16Bytes(std::string_view bytes) {
    std::u16string text(bytes.size() / 2, u'\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto low = static_cast<unsigned char>(bytes[2 * i]);
        const auto high = static_cast<unsigned char>(bytes[2 * i + 1]);
        text[i] = static_cast<char16_t>(low | high << 8);
    }
    return text::FromUtf16(text);
}

CString Decode(std::string_view bytes) {
    if (bytes.starts_with(kUtf16Mark)) {
        return FromUtf16Bytes(bytes.substr(kUtf16Mark.size()));
    }
    if (bytes.starts_with(text::kUtf8Mark)) {
        bytes.remove_prefix(text::kUtf8Mark.size());
    }
    return CString(bytes);
}

char UpperByte(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// Equal but for the case of single-byte letters.
bool SameName(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    // Most names differ in some byte, whatever its case, and need no look at their characters.
    const bool similar = std::equal(a.begin(), a.end(), b.begin(), [](char left, char right) {
        return UpperByte(left) == UpperByte(right);
    });
    return similar && (a == b || text::ToUpper(a) == text::ToUpper(b));
}

/// The end of the line that starts at `start`.
std::size_t LineEnd(std::string_view text, std::size_t start) {
    const auto* const end = std::find_if(text.begin() + start, text.end(), [](char c) {
        return c == '\n' || c == '\r' || c == '\0';
    });
    return static_cast<std::size_t>(end - text.begin());
}

int DigitValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return 16;
}

int ParseInt(std::string_view text) {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    const int base = hexadecimal ? 16 : 10;
    if (hexadecimal) {
        text.remove_prefix(2);
    }
    std::uint32_t value = 0;
    for (const char c : text) {
        const int digit = DigitValue(c);
        if (digit >= base) {
            break;
        }
        value = value * static_cast<std::uint32_t>(base) + static_cast<std::uint32_t>(digit);
    }
    return static_cast<int>(negative ? 0U - value : value);
}

bool IsOneLine(std::string_view text) {
    return std::ranges::none_of(std::string_view("\r\n\0", 3), [text](char end) {
        return text.find(end) != std::string_view::npos;
    });
}

}  // namespace

ProfileReader::ProfileReader(std::string_view bytes)
    : m_text(std::make_unique<const CString>(Decode(bytes))) {
    const std::string_view text = *m_text;
    Entries* section = nullptr;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = LineEnd(text, start);
        ParseLine(text::Trim(text.substr(start, end - start)), section);
        start = end + 1;
    }
}

void ProfileReader::ParseLine(std::string_view line, Entries*& section) {
    if (line.empty() || line.front() == ';') {
        return;
    }
    if (line.front() == '[') {
        const std::string_view name = line.substr(1);
        const std::string_view inside = name.substr(0, text::FindChar(name, ']'));
        const auto [place, isNew] = m_sections.try_emplace(text::ToUpper(text::Trim(inside)));
        section = isNew ? &place->second : nullptr;
        return;
    }
    const std::size_t equals = line.find('=');
    if (section != nullptr && equals != std::string_view::npos) {
        section->push_back(
            {text::Trim(line.substr(0, equals)), Unquote(text::Trim(line.substr(equals + 1)))});
    }
}

const ProfileReader::Entry* ProfileReader::Find(const CString& section, const CString& key) const {
    const auto found = m_sections.find(text::ToUpper(text::Trim(section)));
    if (found == m_sections.end()) {
        return nullptr;
    }
    const std::string_view wanted = text::Trim(key);
    const auto entry = std::ranges::find_if(
        found->second, [wanted](const Entry& each) { return SameName(each.key, wanted); });
    return entry == found->second.end() ? nullptr : &*entry;
}

CString ProfileReader::GetString(const CString& section, const CString& key,
                                 const CString& defaultValue) const {
    if (const Entry* entry = Find(section, key)) {
        return CString(entry->value);
    }
    return defaultValue.substr(0, defaultValue.find_last_not_of(' ') + 1);
}

std::size_t ProfileReader::GetString(const CString& section, const CString& key,
                                     const CString& defaultValue, char* buffer,
                                     std::size_t size) const {
    if (size == 0) {
        return 0;
    }
    const Entry* entry = Find(section, key);
    const CString missing = entry == nullptr ? GetString(section, key, defaultValue) : CString();
    const std::string_view value = entry == nullptr ? std::string_view(missing) : entry->value;
    const std::size_t copied = value.copy(buffer, size - 1);
    buffer[copied] = '\0';
    return copied;
}

int ProfileReader::GetInt(const CString& section, const CString& key, int defaultValue) const {
    const Entry* entry = Find(section, key);
    return entry == nullptr ? defaultValue : ParseInt(entry->value);
}

bool ProfileReader::HasSection(const CString& section) const {
    return m_sections.contains(text::ToUpper(text::Trim(section)));
}

bool ProfileWriter::SetString(const CString& section, const CString& key, const CString& value) {
    if (!IsOneLine(section) || !IsOneLine(key) || !IsOneLine(value)) {
        return false;
    }
    const auto [place, isNew] = m_positions.try_emplace(text::ToUpper(section), m_sections.size());
    if (isNew) {
        m_sections.push_back({section, {}});
    }
    auto& entries = m_sections[place->second].entries;
    const auto entry = std::ranges::find_if(
        entries, [&key](const auto& each) { return SameName(each.first, key); });
    if (entry == entries.end()) {
        entries.emplace_back(key, value);
    } else {
        entry->second = value;
    }
    return true;
}

bool ProfileWriter::SetInt(const CString& section, const CString& key, int value) {
    return SetString(section, key, std::to_string(value));
}

std::string ProfileWriter::Bytes() const {
    constexpr std::string_view kLineEnd = "\r\n";
    std::string bytes;
    for (const Section& section : m_sections) {
        bytes.append("[").append(section.name).append("]").append(kLineEnd);
        for (const auto& [key, value] : section.entries) {
            bytes.append(key).append("=").append(value).append(kLineEnd);
        }
    }
    return bytes;
}

}  // namespace ta
