#include "platform/Text.h"

#include "platform/FormatText.h"

#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <array>
#include <memory>

namespace ta::text {
namespace {

struct LeadRange {
    unsigned char first;
    unsigned char last;
};

struct CodePageEntry {
    int number;
    const char* converter;
    std::array<LeadRange, 2> lead;
    unsigned char lastTrail;
};

constexpr LeadRange kNone{1, 0};

constexpr std::array<CodePageEntry, 5> kCodePages{{
    {950, "windows-950-2000", {{{0x81, 0xFE}, kNone}}, 0xFE},
    {936, "windows-936-2000", {{{0x81, 0xFE}, kNone}}, 0xFE},
    {932, "ibm-943_P15A-2003", {{{0x81, 0x9F}, {0xE0, 0xFC}}}, 0xFC},
    {949, "windows-949-2000", {{{0x81, 0xFE}, kNone}}, 0xFE},
    {1252, "ibm-5348_P100-1997", {{kNone, kNone}}, 0},
}};

const CodePageEntry* g_codePage = &kCodePages[0];

bool IsLeadByte(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    return std::ranges::any_of(g_codePage->lead, [value](LeadRange range) {
        return value >= range.first && value <= range.last;
    });
}

// The converters take these bytes for a second half, whether or not the pair has a character.
bool IsTrailByte(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    return value >= 0x40 && value != 0x7F && value <= g_codePage->lastTrail;
}

struct ConverterCloser {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};

struct OpenConverter {
    const CodePageEntry* codePage = nullptr;
    std::unique_ptr<UConverter, ConverterCloser> handle;
};

/// Its handle is null when the machine lacks the converter.
OpenConverter Open(const CodePageEntry& codePage) {
    UErrorCode error = U_ZERO_ERROR;
    OpenConverter open;
    open.handle.reset(ucnv_open(codePage.converter, &error));
    if (open.handle) {
        ucnv_setSubstChars(open.handle.get(), "?", 1, &error);
        // Best-fit look-alikes would let a name come back as another one.
        ucnv_setFallback(open.handle.get(), false);
    }
    open.codePage = &codePage;
    return open;
}

// An ICU converter keeps state and belongs to one thread. Null when the machine lacks it.
UConverter* Converter() {
    thread_local OpenConverter open;
    if (open.codePage != g_codePage) {
        open = Open(*g_codePage);
    }
    return open.handle.get();
}

// Without a converter the characters that all code pages share come through.
CString AsciiFromUtf16(std::u16string_view utf16) {
    CString result;
    for (const char16_t unit : utf16) {
        // One "?" for both halves of a character beyond 16 bits.
        if (unit < 0xDC00 || unit > 0xDFFF) {
            result += unit < 0x80 ? static_cast<char>(unit) : '?';
        }
    }
    return result;
}

std::u16string AsciiToUtf16(std::string_view text) {
    std::u16string result;
    for (std::size_t i = 0; i < text.size(); i += CharLength(text, i)) {
        const auto byte = static_cast<unsigned char>(text[i]);
        result += byte < 0x80 ? static_cast<char16_t>(byte) : u'\uFFFD';
    }
    return result;
}

CString Encode(UConverter* converter, std::u16string_view utf16) {
    if (converter == nullptr) {
        return AsciiFromUtf16(utf16);
    }
    CString result(utf16.size() * 2 + 1, '\0');
    UErrorCode error = U_ZERO_ERROR;
    const int32_t length =
        ucnv_fromUChars(converter, result.data(), static_cast<int32_t>(result.size()), utf16.data(),
                        static_cast<int32_t>(utf16.size()), &error);
    result.resize(static_cast<std::size_t>(length));
    return result;
}

std::u16string Decode(UConverter* converter, std::string_view text) {
    if (converter == nullptr) {
        return AsciiToUtf16(text);
    }
    std::u16string result(text.size() + 1, u'\0');
    UErrorCode error = U_ZERO_ERROR;
    const int32_t length =
        ucnv_toUChars(converter, result.data(), static_cast<int32_t>(result.size()), text.data(),
                      static_cast<int32_t>(text.size()), &error);
    result.resize(static_cast<std::size_t>(length));
    return result;
}

const CodePageEntry* Find(int codePage) {
    const auto found = std::ranges::find(kCodePages, codePage, &CodePageEntry::number);
    return found == kCodePages.end() ? nullptr : &*found;
}

/// Adds the characters of `utf16` that come out as the "?" of what is lacking, each once.
void AddLost(UConverter* converter, std::u16string_view utf16, std::u16string& lost) {
    for (std::size_t i = 0; i < utf16.size();) {
        const bool isPair = U16_IS_LEAD(utf16[i]) && i + 1 < utf16.size();
        const std::u16string_view character = utf16.substr(i, isPair ? 2 : 1);
        i += character.size();
        const bool isLost = character != u"?" && Encode(converter, character) == "?";
        if (isLost && lost.find(character) == std::u16string::npos) {
            lost += character;
        }
    }
}

std::u16string Utf8ToUtf16(std::string_view utf8) {
    std::u16string result(utf8.size(), u'\0');
    UErrorCode error = U_ZERO_ERROR;
    int32_t length = 0;
    u_strFromUTF8WithSub(result.data(), static_cast<int32_t>(result.size()), &length, utf8.data(),
                         static_cast<int32_t>(utf8.size()), 0xFFFD, nullptr, &error);
    result.resize(static_cast<std::size_t>(length));
    return result;
}

std::string Utf16ToUtf8(std::u16string_view text) {
    std::string result(text.size() * 3, '\0');
    UErrorCode error = U_ZERO_ERROR;
    int32_t length = 0;
    u_strToUTF8WithSub(result.data(), static_cast<int32_t>(result.size()), &length, text.data(),
                       static_cast<int32_t>(text.size()), 0xFFFD, nullptr, &error);
    result.resize(static_cast<std::size_t>(length));
    return result;
}

}  // namespace

bool SetCodePage(int codePage) {
    const CodePageEntry* const found = Find(codePage);
    g_codePage = found != nullptr ? found : g_codePage;
    return found != nullptr;
}

int CodePage() {
    return g_codePage->number;
}

CString FromUtf16(std::u16string_view utf16) {
    return Encode(Converter(), utf16);
}

CString FromUtf16(std::u16string_view utf16, int codePage, std::u16string* lost) {
    const CodePageEntry* const found = Find(codePage);
    if (found == nullptr) {
        return {};
    }
    const OpenConverter open = Open(*found);
    if (lost != nullptr) {
        AddLost(open.handle.get(), utf16, *lost);
    }
    return Encode(open.handle.get(), utf16);
}

std::u16string ToUtf16(std::string_view text) {
    return Decode(Converter(), text);
}

std::u16string ToUtf16(std::string_view text, int codePage) {
    const CodePageEntry* const found = Find(codePage);
    return found == nullptr ? std::u16string() : Decode(Open(*found).handle.get(), text);
}

CString FromUtf8(std::string_view utf8) {
    return FromUtf16(Utf8ToUtf16(utf8));
}

std::string ToUtf8(std::string_view text) {
    return Utf16ToUtf8(ToUtf16(text));
}

std::size_t CharLength(std::string_view text, std::size_t position) {
    return IsLeadByte(text[position]) && position + 1 < text.size() &&
                   IsTrailByte(text[position + 1])
               ? 2
               : 1;
}

std::wstring detail::ToUnits(std::string_view text) {
    std::wstring units;
    for (std::size_t i = 0; i < text.size();) {
        unsigned unit = static_cast<unsigned char>(text[i]);
        if (CharLength(text, i++) == 2) {
            unit = unit << 8 | static_cast<unsigned char>(text[i++]);
        }
        units += static_cast<wchar_t>(unit);
    }
    return units;
}

CString detail::FromUnits(std::wstring_view units) {
    CString text;
    for (const wchar_t unit : units) {
        const auto value = static_cast<unsigned>(unit);
        if (value > 0xFF) {
            text += static_cast<char>(value >> 8 & 0xFF);
        }
        text += static_cast<char>(value & 0xFF);
    }
    return text;
}

std::size_t FindChar(std::string_view text, char wanted, std::size_t from) {
    for (std::size_t i = from; i < text.size(); i += CharLength(text, i)) {
        if (text[i] == wanted) {
            return i;
        }
    }
    return std::string_view::npos;
}

CString Cut(std::string_view text, std::size_t maxBytes) {
    std::size_t end = 0;
    while (end < text.size() && end + CharLength(text, end) <= maxBytes) {
        end += CharLength(text, end);
    }
    return CString(text.substr(0, end));
}

CString ToUpper(std::string_view text) {
    CString result(text);
    for (std::size_t i = 0; i < result.size(); i += CharLength(result, i)) {
        if (result[i] >= 'a' && result[i] <= 'z') {
            result[i] = static_cast<char>(result[i] - 'a' + 'A');
        }
    }
    return result;
}

std::string_view Trim(std::string_view text) {
    constexpr std::string_view kWhite = " \t\r\n\v\f";
    const std::size_t first = text.find_first_not_of(kWhite);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kWhite) - first + 1);
}

}  // namespace ta::text
