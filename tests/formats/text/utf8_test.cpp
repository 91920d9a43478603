#include "formats/text/utf8.h"

#include <gtest/gtest.h>

#include "formats/text/byte_order_mark.h"

namespace intake {
namespace {

/// The character that a text begins with, and how many bytes it takes; "-" for none.
std::string first(std::string_view text) {
    const Utf8Character character = utf8CharacterAt(text);
    return (character.isValid ? std::to_string(static_cast<uint32_t>(character.code)) : "-") + "/" +
           std::to_string(character.length);
}

TEST(Utf8Characters, AreOfOneToFourBytes) {
    EXPECT_EQ(first("a\u00E9"), "97/1");
    EXPECT_EQ(first("\u0080"), "128/2");
    EXPECT_EQ(first("\u07FF"), "2047/2");
    EXPECT_EQ(first("\u0800"), "2048/3");
    EXPECT_EQ(first("\uFFFF"), "65535/3");
    EXPECT_EQ(first("\U00010000"), "65536/4");
    EXPECT_EQ(first("\U0010FFFFx"), "1114111/4");
}

TEST(Utf8Characters, AreNeitherCutNorTooLongNorSurrogatesNorBeyondUnicode) {
    EXPECT_EQ(first("\x80"), "-/1");
    EXPECT_EQ(first("\xC3"), "-/1");
    EXPECT_EQ(first("\xE2\x82x"), "-/2");
    EXPECT_EQ(first("\xF0\x9F\x98"), "-/3");
    EXPECT_EQ(first("\xC0\x80"), "-/1");
    EXPECT_EQ(first("\xE0\x80\x80"), "-/1");
    EXPECT_EQ(first("\xED\xA0\x80"), "-/1");
    EXPECT_EQ(first("\xF4\x90\x80\x80"), "-/1");
    EXPECT_EQ(first("\xF5"), "-/1");
}

TEST(Utf8Characters, AreWrittenAsTheyAreRead) {
    for (const char32_t code : {0x7F, 0x80, 0x7FF, 0x800, 0xFFFD, 0x10000, 0x10FFFF}) {
        std::string text;
        appendUtf8(code, text);
        EXPECT_EQ(utf8CharacterAt(text).code, code);
        EXPECT_EQ(utf8CharacterAt(text).length, text.size());
    }
}

TEST(Utf8Texts, AreValidOrMadeSo) {
    EXPECT_TRUE(isValidUtf8(""));
    EXPECT_TRUE(isValidUtf8("eight bytes and \u20AC more"));
    EXPECT_FALSE(isValidUtf8("eight bytes and \xFF more"));
    EXPECT_EQ(withValidUtf8("a\u20AC"), "a\u20AC");
    EXPECT_EQ(withValidUtf8("a\xE2\x82z\xFF\xFF"), "a\uFFFDz\uFFFD\uFFFD");
}

TEST(Utf8Texts, BeginWithSoMuchAscii) {
    EXPECT_EQ(asciiLength(""), 0U);
    EXPECT_EQ(asciiLength("0123456789abcdef\u00E9"), 16U);
    EXPECT_EQ(asciiLength("012\u00E9456789abcdef"), 3U);
}

TEST(ByteOrderMarks, SayTheEncoding) {
    EXPECT_STREQ(byteOrderMarkOf("\xEF\xBB\xBF<a/>").encoding, "UTF-8");
    EXPECT_STREQ(byteOrderMarkOf("\xFF\xFE<").encoding, "UTF-16LE");
    EXPECT_STREQ(byteOrderMarkOf("\xFE\xFF").encoding, "UTF-16BE");
    EXPECT_EQ(byteOrderMarkOf("\xEF\xBB").encoding, nullptr);
    EXPECT_EQ(byteOrderMarkOf("").bytes, "");
}

}  // namespace
}  // namespace intake
