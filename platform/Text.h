#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <cstddef>
#include <string>
#include <string_view>

/// Text in the user's code page. The second byte of a double-byte character can be any of
/// 0x40-0x7E, so a letter, a bracket or a backslash found byte by byte may be half a character.
/// Bytes below 0x40 (blank, digits, `, - / # $ ( * = ; "`) never are and may be searched directly;
/// for anything else use the functions below.
namespace ta::text {

/// Selects the code page by its number: 950 (Traditional Chinese, the default), 936, 932, 949 or
/// 1252. Returns false, and changes nothing, for any other number. For the start of the program:
/// text converted before is not converted again.
TADIALOGS_EXPORT bool SetCodePage(int codePage);
TADIALOGS_EXPORT int CodePage();

/// Conversions at the edge of the library. A character that the code page lacks becomes "?", but an
/// invisible one (zero-width blank, joiner, variation selector) is left out; bytes that are no
/// character of the code page become U+FFFD. Nothing fails. On a machine that lacks the code page
/// only ASCII comes through, and everything else becomes "?" or U+FFFD.
TADIALOGS_EXPORT CString FromUtf8(std::string_view utf8);
TADIALOGS_EXPORT std::string ToUtf8(std::string_view text);
TADIALOGS_EXPORT CString FromUtf16(std::u16string_view utf16);
TADIALOGS_EXPORT std::u16string ToUtf16(std::string_view text);
/// The same into another code page, one of SetCodePage's. The characters that it lacks are put into
/// `lost`, unless that is null, each once. Empty for a code page that is not known.
TADIALOGS_EXPORT CString FromUtf16(std::u16string_view utf16, int codePage, std::u16string* lost);
TADIALOGS_EXPORT std::u16string ToUtf16(std::string_view text, int codePage);

/// Length in bytes (1 or 2) of the character that starts at `position`, which must be the start of
/// a character below text.size(). A lead byte that no second half follows counts 1.
TADIALOGS_EXPORT std::size_t CharLength(std::string_view text, std::size_t position);

/// Position of the first single-byte character `wanted` at or after `from` (the start of a
/// character), or npos. Second halves of double-byte characters do not match.
TADIALOGS_EXPORT std::size_t FindChar(std::string_view text, char wanted, std::size_t from = 0);

/// The longest front part of `text` of at most `maxBytes` bytes that does not end in half a
/// character.
TADIALOGS_EXPORT CString Cut(std::string_view text, std::size_t maxBytes);

/// `text` with its single-byte letters a-z upper-cased; double-byte characters stay as they are.
TADIALOGS_EXPORT CString ToUpper(std::string_view text);

/// `text` without blanks, tabs, CR, LF, vertical tabs and form feeds at both ends. It looks into
/// the text that was handed in, which must live on.
TADIALOGS_EXPORT std::string_view Trim(std::string_view text);

}  // namespace ta::text
