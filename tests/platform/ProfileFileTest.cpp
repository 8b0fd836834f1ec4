// Profile-string files: what the reader takes for a section, a key and a value, and what the writer
// makes and refuses.

#include "platform/ProfileFile.h"
#include "platform/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace ta::test {
namespace {

/// The value of `key` in the section, "-" when it is missing.
CString Read(const std::string& bytes, const CString& section, const CString& key = "k") {
    return ProfileReader(bytes).GetString(section, key, "-");
}

struct ReadCase {
    const char* bytes;
    const char* section;
    const char* value;  ///< of the key "k"; "-" for none
    const char* key = "k";
};

TEST(ProfileReaderTest, SectionsKeysAndValues) {
    const ReadCase cases[] = {
        // Where a section's name ends. 0xA15D, 0xA55B: the second halves are "]" and "[".
        {"[s]k=0\nk=1", "s", "1"},
        {"[s\nk=1", "s", "1"},
        {"[a]b]\nk=1", "a", "1"},
        {"[]\nk=1", "", "1"},
        {"[\xA5\x5B]x]\nk=1", "\xA5\x5B", "1"},
        {"[\x5D\n[\xA1\x5D]\nk=1", "\xA1\x5D", "1"},
        // Blanks and quotes, of which one pair goes, and none from names.
        {"[ \t s \t]\n \tk\t = \t a b \t", "s", "a b"},
        {"\f[\vs\f]\v\n\fk\v=\va\fb\f", "s", "a\fb"},
        {"[s]\n\v;k=0\n\fk=1", " s\t\v", "1", "\f k "},
        {"[s]\nk=\"  a  \"", "s", "  a  "},
        {"[s]\nk= ' a ' ", "s", " a "},
        {"[s]\nk=\"\"a\"\"", "s", "\"a\""},
        {"[s]\nk=\"", "s", "\""},
        {"[s]\nk=\"\"", "s", ""},
        {"[s]\n\"k\"=1", "s", "1", "\"k\""},
        // What is a key.
        {"[s]\na = b = c", "s", "b = c", "a"},
        {"[s]\nk", "s", "-"},
        {"[s]\n=1", "s", "1", ""},
        {"k=0\n[s]\n", "s", "-"},
        {"[s]\n;k=0\n ; k=2\nk=1", "s", "1"},
        {"[s]\nk=a;b#c ; d", "s", "a;b#c ; d"},
        {";[s]\nk=1", "s", "-"},
    };
    for (const ReadCase& each : cases) {
        EXPECT_EQ(Read(each.bytes, each.section, each.key), each.value) << each.bytes;
    }
}

TEST(ProfileReaderTest, TheCaseOfSingleByteLettersOnly) {
    EXPECT_EQ(Read("[Common]\nFileVersion=1", "cOMMON", "fileVERSION"), "1");
    EXPECT_EQ(Read("[s]\nk@=1", "s", "k`"), "-") << "beside the letters";
    // 0xA441 and 0xA461 are two characters; their second halves look like one letter.
    const std::string bytes = "[\xA4\x41]\nk=1\n[\xA4\x61]\nk=2\n\xA4\x41=3\n\xA4\x61=4\n";
    EXPECT_EQ(Read(bytes, "\xA4\x41"), "1");
    EXPECT_EQ(Read(bytes, "\xA4\x61"), "2");
    EXPECT_EQ(Read(bytes, "\xA4\x61", "\xA4\x41"), "3");
    EXPECT_EQ(Read(bytes, "\xA4\x61", "\xA4\x61"), "4");
    // A letter after a double-byte character is one.
    EXPECT_EQ(Read("[s]\n\xA4\x41\x61=1", "s", "\xA4\x41\x41"), "1");
}

TEST(ProfileReaderTest, TheFirstOfEqualsWins) {
    const std::string bytes = "[s]\nk=1\nK=2\n[S]\nk=3\nm=4\n[t]\nk=5\n[s ]\nn=6";
    EXPECT_EQ(Read(bytes, "S", "K"), "1");
    EXPECT_EQ(Read(bytes, "s", "m"), "-") << "a section that appears twice is not joined";
    EXPECT_EQ(Read(bytes, "s", "n"), "-");
}

TEST(ProfileReaderTest, LineEnds) {
    for (const char* end : {"\n", "\r", "\r\n", "\n\n", "\r\r\n"}) {
        const std::string bytes = std::string("[s]") + end + "k=1" + end + "m=2" + end;
        EXPECT_EQ(Read(bytes, "s"), "1");
        EXPECT_EQ(Read(bytes, "s", "m"), "2");
    }
    EXPECT_EQ(Read(std::string("[s]\nk=1\0m=2\n", 12), "s"), "1");
}

TEST(ProfileReaderTest, Marks) {
    EXPECT_EQ(Read("\xEF\xBB\xBF[s]\nk=1", "s"), "1");
    std::string utf16 = "\xFF\xFE";
    for (const char16_t unit : std::u16string(u"[功]\r\nk=許 蓋\r\nm=\u0100")) {
        utf16 += static_cast<char>(unit & 0xFF);
        utf16 += static_cast<char>(unit >> 8);
    }
    EXPECT_EQ(Read(utf16, text::FromUtf8("功")), text::FromUtf8("許 蓋"));
    EXPECT_EQ(Read(utf16 + "x", text::FromUtf8("功"), "m"), "?") << "half a unit at the end";
    EXPECT_EQ(Read("\xFF\xFE", "s"), "-");
}

TEST(ProfileReaderTest, MissingAndEmptyValues) {
    const ProfileReader file("[s]\nempty=\n");
    EXPECT_EQ(file.GetString("s", "k", "  none \t  "), "  none \t");
    EXPECT_EQ(file.GetString("t", "k", "   "), "");
    EXPECT_EQ(file.GetInt("s", "k", -7), -7);
    EXPECT_EQ(file.GetInt("s", "empty", -7), 0);
}

TEST(ProfileReaderTest, Integers) {
    const auto read = [](const char* value) {
        return ProfileReader(std::string("[s]\nk=") + value).GetInt("s", "k", -7);
    };
    const std::pair<const char*, int> cases[] = {
        {"12", 12},          {"-12x3", -12},
        {"- 12", 0},         {"012", 12},
        {"0x1fG", 31},       {"-0x10", -16},
        {"0x", 0},           {"1f", 1},
        {"'5'", 5},          {"2147483648", -2147483647 - 1},
        {"-4294967297", -1}, {"0x1FFFFFFFF", -1},
    };
    for (const auto& [value, number] : cases) {
        EXPECT_EQ(read(value), number) << value;
    }
}

TEST(ProfileReaderTest, ValuesIntoABuffer) {
    const ProfileReader file("[s]\nk=12345\n");
    const auto read = [&file](std::size_t size, const char* key = "k") {
        char buffer[16];
        std::fill(std::begin(buffer), std::end(buffer), '#');
        const std::size_t copied = file.GetString("s", key, "ab  ", buffer, size);
        EXPECT_EQ(buffer[size], '#') << "nothing behind the buffer";
        return size == 0 ? CString("#") : CString(buffer) + "/" + std::to_string(copied);
    };
    EXPECT_EQ(read(5), "1234/4") << "cut";
    EXPECT_EQ(read(1), "/0");
    EXPECT_EQ(read(0), "#");
    EXPECT_EQ(read(10, "missing"), "ab/2");
}

TEST(ProfileReaderTest, AReaderCanBeMoved) {
    std::optional<ProfileReader> first(std::in_place, "[s]\nk=a short one");
    ProfileReader second(std::move(*first));
    first.reset();
    EXPECT_EQ(second.GetString("s", "k"), "a short one");
    ProfileReader third;
    EXPECT_EQ(third.GetString("s", "k", "none"), "none");
    third = std::move(second);
    EXPECT_EQ(third.GetString("s", "k"), "a short one");
}

TEST(ProfileWriterTest, TheOrderOfTheCalls) {
    ProfileWriter file;
    EXPECT_EQ(file.Bytes(), "");
    EXPECT_TRUE(file.SetString("b", "two", "2"));
    EXPECT_TRUE(file.SetInt("a", "one", -1));
    EXPECT_TRUE(file.SetString("B", "three", ""));
    EXPECT_TRUE(file.SetString("b", "TWO", " two = 2"));
    EXPECT_EQ(file.Bytes(), "[b]\r\ntwo= two = 2\r\nthree=\r\n[a]\r\none=-1\r\n");
    EXPECT_TRUE(file.SetString("\xA4\x41", "\xA4\x41", "1"));
    EXPECT_TRUE(file.SetString("\xA4\x61", "\xA4\x61", "2"));
    EXPECT_TRUE(file.Bytes().ends_with("[\xA4\x41]\r\n\xA4\x41=1\r\n[\xA4\x61]\r\n\xA4\x61=2\r\n"));
}

TEST(ProfileWriterTest, WhatCouldForgeKeysIsRefused) {
    ProfileWriter file;
    for (const CString& bad : {CString("a\rb"), CString("a\n"), CString("a\0b", 3)}) {
        EXPECT_FALSE(file.SetString(bad, "k", "1"));
        EXPECT_FALSE(file.SetString("s", bad, "1"));
        EXPECT_FALSE(file.SetString("s", "k", bad));
        EXPECT_FALSE(file.SetInt(bad, "k", 1));
    }
    EXPECT_EQ(file.Bytes(), "") << "not even a section was added";
}

}  // namespace
}  // namespace ta::test
