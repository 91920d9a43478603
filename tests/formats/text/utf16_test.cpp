// UTF-16 as drivers take and give it.

#include "formats/text/utf16.h"

#include <gtest/gtest.h>

namespace intake {

namespace {

TEST(Utf16, CharactersOfEveryLengthAreConvertedBothWays) {
    const std::string utf8 = "a\x7F\u0080\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0010FFFF";
    const std::u16string utf16 = u"a\x7F\u0080\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0010FFFF";

    EXPECT_EQ(toUtf8(utf16), utf8);
    EXPECT_EQ(toUtf16(utf8), utf16);
}

TEST(Utf16, AZeroIsACharacter) {
    EXPECT_EQ(toUtf8(std::u16string(u"a\0b", 3)), std::string("a\0b", 3));
    EXPECT_EQ(toUtf16(std::string("a\0b", 3)), std::u16string(u"a\0b", 3));
}

TEST(Utf16, AHalfOfAPairIsReplaced) {
    EXPECT_EQ(toUtf8(std::u16string{u'a', 0xD83C, u'b'}), "a\uFFFDb");
    EXPECT_EQ(toUtf8(std::u16string{u'a', 0xDFC6, 0xD83C}), "a\uFFFD\uFFFD");
    EXPECT_EQ(toUtf8(std::u16string{0xDFC6, 0xDFC6}), "\uFFFD\uFFFD");
    EXPECT_EQ(toUtf8(std::u16string{0xD83C, 0xD83C, 0xDFC6}), "\uFFFD\U0001F3C6");
}

TEST(Utf16, WhatIsNoUtf8IsReplacedOnceForEachCharacterThatItCouldHaveBecome) {
    EXPECT_EQ(toUtf16("a\xFF"
                      "b"),
              u"a\uFFFDb");
    EXPECT_EQ(toUtf16("\xC3"), u"\uFFFD");  // cut
    EXPECT_EQ(toUtf16("\xE2\x82"
                      "x"),
              u"\uFFFDx");                                                // cut
    EXPECT_EQ(toUtf16("\xC0\x80"), u"\uFFFD\uFFFD");                      // too long
    EXPECT_EQ(toUtf16("\xE0\x80\x80"), u"\uFFFD\uFFFD\uFFFD");            // too long
    EXPECT_EQ(toUtf16("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");            // a surrogate
    EXPECT_EQ(toUtf16("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");  // beyond the last
}

}  // namespace

}  // namespace intake
