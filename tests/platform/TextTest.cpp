#include "platform/FormatText.h"
#include "platform/Text.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include <dlfcn.h>
#include <unicode/ucnv.h>

namespace {

bool g_hasConverters = true;

}  // namespace

#define TA_TEST_TEXT_OF(name) #name
#define TA_TEST_NAME_OF(name) TA_TEST_TEXT_OF(name)

// Stands before the library's own, as on a machine that lacks the data.
extern "C" UConverter* ucnv_open(const char* name, UErrorCode* error) {
    if (!g_hasConverters) {
        *error = U_FILE_ACCESS_ERROR;
        return nullptr;
    }
    static const auto real =
        reinterpret_cast<decltype(&ucnv_open)>(dlsym(RTLD_NEXT, TA_TEST_NAME_OF(ucnv_open)));
    return real(name, error);
}

namespace ta::text {
namespace {

CString Bytes(std::initializer_list<int> values) {
    CString bytes;
    for (const int value : values) {
        bytes += static_cast<char>(value);
    }
    return bytes;
}

/// Brings the default code page back.
struct CodePageScope {
    explicit CodePageScope(int number) { EXPECT_TRUE(SetCodePage(number)); }
    ~CodePageScope() { SetCodePage(950); }
};

bool IsPrivateUse(char16_t unit) {
    return unit >= 0xE000 && unit <= 0xF8FF;
}

TEST(CodePage950, EveryCharacterComesBackAsItsBytes) {
    // Signs that the code page has twice; conversion settles on one of the two codes.
    const std::map<CString, CString> twice{{"\xA2\xA4", "\xF9\xF9"}, {"\xA2\xA5", "\xF9\xE9"},
                                           {"\xA2\xA6", "\xF9\xEA"}, {"\xA2\xA7", "\xF9\xEB"},
                                           {"\xA2\xCC", "\xA4\x51"}, {"\xA2\xCE", "\xA4\xCA"},
                                           {"\xF9\xFA", "\xA2\x7E"}, {"\xF9\xFB", "\xA2\xA1"},
                                           {"\xF9\xFC", "\xA2\xA2"}, {"\xF9\xFD", "\xA2\xA3"}};
    int standard = 0;
    int privateUse = 0;
    for (int lead = 0x81; lead <= 0xFE; ++lead) {
        for (int trail = 0x40; trail <= 0xFE; ++trail) {
            const CString bytes = Bytes({lead, trail});
            const std::u16string unicode = ToUtf16(bytes);
            if (unicode.size() != 1 || unicode[0] == 0xFFFD) {
                continue;
            }
            ++(IsPrivateUse(unicode[0]) ? privateUse : standard);
            const auto other = twice.find(bytes);
            const CString& expected = other == twice.end() ? bytes : other->second;
            ASSERT_EQ(FromUtf16(unicode), expected) << std::hex << lead << ' ' << trail;
            ASSERT_EQ(FromUtf8(ToUtf8(bytes)), expected) << std::hex << lead << ' ' << trail;
        }
    }
    EXPECT_EQ(standard, 13503);
    EXPECT_EQ(privateUse, 6217);
    EXPECT_EQ(FromUtf8("€功能（許蓋）"), "\xA3\xE1\xA5\x5C\xAF\xE0\xA1\x5D\xB3\x5C\xBB\\\xA1\x5E");
    EXPECT_EQ(ToUtf16("\xFA\x40\x81\x40\xC6\xA1"), u"\uE000\uEEB8\uF6B1");
    for (int byte = 0; byte < 0x80; ++byte) {
        EXPECT_EQ(FromUtf8(Bytes({byte})), Bytes({byte}));
    }
}

TEST(CodePage950, NoCharacterComesBackAsAnotherOne) {
    std::set<char16_t> leftOut;
    for (unsigned code = 1; code <= 0xFFFF; ++code) {
        if (code >= 0xD800 && code <= 0xDFFF) {
            continue;
        }
        const std::u16string character(1, static_cast<char16_t>(code));
        const CString bytes = FromUtf16(character);
        if (bytes.empty()) {
            leftOut.insert(static_cast<char16_t>(code));
        } else if (bytes != "?") {
            ASSERT_EQ(ToUtf16(bytes), character) << std::hex << code;
        }
    }
    EXPECT_EQ(leftOut.count(u'\u200B'), 1U);
    EXPECT_EQ(leftOut.count(u'\uFEFF'), 1U);
    EXPECT_LT(leftOut.size(), 100U) << "More than the invisible characters is left out.";
}

TEST(Conversion, PutsAQuestionMarkForEveryCharacterThatIsLacking) {
    const std::map<std::string, CString> cases{
        {"é", "?"},      // Latin-1
        {"㐀𠀀", "??"},  // rare Han characters, one of them beyond 16 bits
        {"😀", "?"},      // one, not one for each half of the pair
        {"a😀😀b", "a??b"},
        {"❤️", "?"},                // the selector after the heart is invisible
        {"👨‍👩‍👧", "???"},  // the joiners are invisible
        {"台\u200B積電", FromUtf8("台積電")},
        {"\xFF\xE4\xB8", "??"},  // no UTF-8
    };
    for (const auto& [utf8, expected] : cases) {
        EXPECT_EQ(FromUtf8(utf8), expected) << utf8;
    }
    EXPECT_EQ(FromUtf16(std::u16string{u'a', 0xD83D, u'b', 0xDE00}), "a?b?");
}

TEST(Conversion, ShowsBytesThatAreNoCharacter) {
    EXPECT_EQ(ToUtf16("\xA4 b"), u"\uFFFD b");
    EXPECT_EQ(ToUtf16("\xA4,\xA4\x41"), u"\uFFFD,乙");
    EXPECT_EQ(ToUtf16("\xA4\xA0z"), u"\uFFFDz");
    EXPECT_EQ(ToUtf8("\xA4\xA4\xA4"), "中\uFFFD");
    EXPECT_EQ(FromUtf8(ToUtf8("\xA4\xA4\xA4")), "\xA4\xA4?");
}

TEST(Conversion, TakesEmptyTextNulBytesAndLongText) {
    EXPECT_EQ(ToUtf8({}), "");
    const CString withNul("\xA4\x41\0b\0", 5);
    EXPECT_EQ(ToUtf16(withNul), std::u16string(u"乙\0b\0", 4));
    EXPECT_EQ(FromUtf8(ToUtf8(withNul)), withNul);
    EXPECT_EQ(ToUtf16(CString("\xA4\0b", 3)), std::u16string(u"\uFFFD\0b", 3));

    CString text;
    for (int i = 0; i < 300'000; ++i) {
        text += i % 7 == 0 ? "a" : "\xA5\x5C";
    }
    const std::string utf8 = ToUtf8(text);
    EXPECT_EQ(utf8.size(), 42'858U + 3U * 257'142U);
    EXPECT_EQ(FromUtf8(utf8), text);
    // A converter keeps state; a half character at the end of one text must not reach the next.
    EXPECT_EQ(ToUtf16("\xA4"), u"\uFFFD");
    EXPECT_EQ(ToUtf16("A"), u"A");
}

TEST(CodePages, AreSelectedByNumber) {
    EXPECT_EQ(CodePage(), 950);
    for (const int number : {0, -1, 437, 65001, 951}) {
        EXPECT_FALSE(SetCodePage(number)) << number;
        EXPECT_EQ(CodePage(), 950);
    }
    const std::map<int, std::pair<std::string, CString>> samples{
        {936, {"中文é", "\xD6\xD0\xCE\xC4\xA8\xA6"}},
        {932, {"表ｱ", "\x95\x5C\xB1"}},
        {949, {"한中", "\xC7\xD1\xF1\xE9"}},
        {1252, {"é€?", "\xE9\x80?"}},
        {950, {"é中", "?\xA4\xA4"}},
    };
    for (const auto& [number, sample] : samples) {
        const CodePageScope scope(number);
        EXPECT_EQ(CodePage(), number);
        EXPECT_EQ(FromUtf8(sample.first), sample.second) << number;
        EXPECT_EQ(FromUtf8("a😀\u0E01b"), "a??b") << number;
        if (number != 1252) {
            EXPECT_EQ(ToUtf16("a\x88"), u"a\uFFFD") << number;
        }
    }
    const CodePageScope scope(932);
    EXPECT_EQ(CharLength("\xB1\x5C", 0), 1U) << "Half-width katakana are single bytes.";
    EXPECT_EQ(FindChar("\x95\x5C\xB1\x5C", '\\'), 3U);
}

TEST(CodePages, CharactersEndWhereTheConversionSaysThatTheyEnd) {
    for (const int number : {950, 936, 932, 949, 1252}) {
        const CodePageScope scope(number);
        int differing = 0;
        for (int first = 0; first <= 0xFF; ++first) {
            for (int second = 0; second <= 0xFF; ++second) {
                const CString text = Bytes({first, second, ' '});
                std::size_t characters = 0;
                for (std::size_t i = 0; i < text.size(); i += CharLength(text, i)) {
                    ++characters;
                }
                differing += characters != ToUtf16(text).size() ? 1 : 0;
            }
        }
        EXPECT_EQ(differing, 0) << number;
    }
}

TEST(CodePages, WithoutAConverterAsciiComesThrough) {
    g_hasConverters = false;
    {
        const CodePageScope scope(936);  // of which no converter is open yet
        EXPECT_EQ(FromUtf8("a功😀~é\n"), "a??~?\n");
        EXPECT_EQ(ToUtf16("a\xD6\xD0\xD6[\xFF"), u"a\uFFFD\uFFFD\uFFFD");
        EXPECT_EQ(ToUtf8("[k]=1\r\n"), "[k]=1\r\n");
    }
    g_hasConverters = true;
    EXPECT_EQ(FromUtf8("功"), "\xA5\x5C");
}

TEST(FindChar, DoesNotTakeSecondHalvesForCharacters) {
    for (int wanted = 0x40; wanted <= 0x7E; ++wanted) {
        const char character = static_cast<char>(wanted);
        const CString half = Bytes({0xA4, wanted});
        ASSERT_EQ(ToUtf16(half).size(), 1U);
        EXPECT_EQ(FindChar(half, character), std::string::npos) << character;
        EXPECT_EQ(FindChar(half + half + character + character, character), 4U) << character;
        EXPECT_EQ(FindChar(character + half + character, character, 1), 3U) << character;
        // A lead byte without its second half hides nothing.
        EXPECT_EQ(FindChar("\xA4," + CString(1, character), ','), 1U);
    }
    EXPECT_EQ(FindChar(CString("a\0b", 3), '\0'), 1U);
}

TEST(Cut, NeverLeavesHalfACharacter) {
    const CString text = FromUtf8("A功能[許]1蓋\\（b）許功€");
    std::size_t previous = 0;
    for (std::size_t length = 0; length <= text.size() + 2; ++length) {
        const CString cut = Cut(text, length);
        EXPECT_EQ(cut, text.substr(0, cut.size()));
        EXPECT_LE(cut.size(), length);
        EXPECT_GE(cut.size() + 1, std::min(length, text.size()))
            << "One byte may be lost, no more.";
        EXPECT_EQ(ToUtf16(cut).find(u'\uFFFD'), std::u16string::npos) << length;
        EXPECT_GE(cut.size(), previous);
        previous = cut.size();
    }
    EXPECT_EQ(Cut("a\xA4", 2), "a\xA4") << "What fits stays as it is.";
    EXPECT_EQ(Cut("a\xA4", 1), "a");
}

TEST(ToUpper, LeavesSecondHalvesAlone) {
    EXPECT_EQ(ToUpper("abz\xA4\x61z{`1"), "ABZ\xA4\x61Z{`1");
    for (int trail = 'a'; trail <= 'z'; ++trail) {
        EXPECT_EQ(ToUpper(Bytes({0xA5, trail, trail})), Bytes({0xA5, trail, trail - 'a' + 'A'}));
    }
}

TEST(Trim, TakesBlanksOffBothEnds) {
    EXPECT_EQ(Trim(" \t\r\n\v\f\xA5\x5C b \f\v\n\r\t "), "\xA5\x5C b");
    EXPECT_EQ(Trim(" \t\r\n\v\f"), "");
}

TEST(Format, GivesTheBareTextWhenArgumentsDoNotFit) {
    for (const char* format :
         {"%s", "a %d %s", "%n", "%1$s%2$s%9$s", "100%", "%", "%q", "%*d", "%99999999999d",
          "%.99999999999f", "\xA5\x5C%\xA5\x5C", "%s%s%s%s"}) {
        EXPECT_EQ(Format(format), format);
    }
    EXPECT_EQ(Format("%d %s", 1), "%d %s");
    EXPECT_EQ(Format("%d", "text"), "%d");
    EXPECT_EQ(Format("%s %d", CString("a"), 1.5), "%s %d");
}

TEST(Format, KeepsDoubleByteCharactersWhole) {
    const CString name = FromUtf8("功能許蓋");
    EXPECT_EQ(Format(FromUtf8("許%d功%s蓋%d"), 5, name, 6), FromUtf8("許5功功能許蓋蓋6"));
    EXPECT_EQ(Format("\xA4%d", 5),
              "\xA4"
              "5")
        << "Half a character in the format.";
    EXPECT_EQ(Format("%s|", "\xA4"), "\xA4|");
    EXPECT_EQ(Format("[%.3s]", name), FromUtf8("[功能許]"));
    EXPECT_EQ(Format("[%-5s]", name), FromUtf8("[功能許蓋 ]"));
    EXPECT_EQ(Format("%s", CString("a\0b", 3)), CString("a\0b", 3));
    for (int lead = 0x81; lead <= 0xFE; ++lead) {
        for (int trail = 0x40; trail <= 0xFE; ++trail) {
            const CString bytes = Bytes({lead, trail});
            ASSERT_EQ(Format(bytes + "%s", bytes), bytes + bytes);
        }
    }
}

}  // namespace
}  // namespace ta::text
