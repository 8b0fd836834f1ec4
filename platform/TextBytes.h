#pragma once

#include <algorithm>
#include <string_view>

/// What every encoding that the terminal meets in files has in common.
namespace ta::text {

/// Stands before a UTF-8 text, so that a reader does not take it for one of the code page.
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/// Whether the bytes read the same in UTF-8 and in the code page: none above 0x7F.
inline bool IsAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char byte) { return (byte & '\x80') == 0; });
}

}  // namespace ta::text
