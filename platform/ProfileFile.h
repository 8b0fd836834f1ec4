#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

/// Profile-string ("INI") files: "[section]" lines, each followed by "key=value" lines, in bytes of
/// the user's code page.
namespace ta {

/// A profile-string file, parsed once. Sections and keys are found without regard to the case of
/// single-byte letters; of equal sections, and of equal keys in a section, the first one counts.
///
/// - CR, LF, CR LF and NUL end lines. A UTF-16 little-endian mark makes the bytes UTF-16; a UTF-8
///   mark at the start is skipped.
/// - A section name ends at the first "]" that is a character of its own, or with its line.
/// - Blanks, tabs, vertical tabs and form feeds around names, keys and values are dropped, and one
///   pair of equal quotes, single or double, around a value, which keeps the blanks inside.
/// - A line that begins with ";", has no "=", or stands before the first section is no key.
class TADIALOGS_EXPORT ProfileReader {
public:
    ProfileReader() = default;
    /// Any bytes are accepted; what is no section and no key is passed over.
    explicit ProfileReader(std::string_view bytes);
    // Not copied: the parsed file is views into its text.
    ProfileReader(ProfileReader&&) = default;
    ProfileReader& operator=(ProfileReader&&) = default;

    /// The value, or `defaultValue` without its trailing blanks when the key is missing.
    CString GetString(const CString& section, const CString& key,
                      const CString& defaultValue = {}) const;
    /// The same into a buffer of `size` characters, the terminating zero included. Returns the
    /// characters copied without the zero; size - 1 also when the value was longer and was cut.
    std::size_t GetString(const CString& section, const CString& key, const CString& defaultValue,
                          char* buffer, std::size_t size) const;
    /// Sign and leading decimal digits of the value, or hexadecimal ones after "0x", wrapped to 32
    /// bits; 0 when there are none; `defaultValue` when the key is missing.
    int GetInt(const CString& section, const CString& key, int defaultValue) const;
    bool HasSection(const CString& section) const;

private:
    struct Entry {
        std::string_view key;
        std::string_view value;
    };
    using Entries = std::vector<Entry>;

    void ParseLine(std::string_view line, Entries*& section);
    const Entry* Find(const CString& section, const CString& key) const;

    // On the heap, so that the views into it survive a move of the reader.
    std::unique_ptr<const CString> m_text;
    std::unordered_map<CString, Entries> m_sections;  ///< by name in upper case
};

/// Builds a profile-string file in the order in which its keys are set.
class TADIALOGS_EXPORT ProfileWriter {
public:
    /// Sets a key of a section, adding either as needed at the end. false, and nothing changes,
    /// when section, key or value holds CR, LF or NUL: it could forge keys.
    bool SetString(const CString& section, const CString& key, const CString& value);
    bool SetInt(const CString& section, const CString& key, int value);

    /// The file, lines ended by CR LF.
    std::string Bytes() const;

private:
    struct Section {
        CString name;
        std::vector<std::pair<CString, CString>> entries;
    };

    std::vector<Section> m_sections;
    std::unordered_map<CString, std::size_t> m_positions;  ///< by name in upper case
};

}  // namespace ta
