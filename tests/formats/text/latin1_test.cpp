#include "formats/text/latin1.h"

#include <gtest/gtest.h>

namespace intake {
namespace {

std::string narrowed(std::string text, size_t start = 0) {
    narrowToLatin1(text, start);
    return text;
}

TEST(Latin1, HasAQuestionMarkForEachCharacterThatItLacks) {
    EXPECT_EQ(narrowed("\u00E9t\u00E9 \u00A0|"), "\xE9t\xE9 \xA0|");
    EXPECT_EQ(narrowed("a\u20ACb\U0001F600c\u0100"), "a?b?c?");
    EXPECT_EQ(narrowed(""), "");
}

TEST(Latin1, IsMadeOfWhatStandsBehindTheStart) {
    EXPECT_EQ(narrowed("\u00E9\u00E9", 2), "\u00E9\xE9");
}

TEST(Latin1, IsWidenedByteByByte) {
    EXPECT_EQ(latin1ToUtf8("\xE9t\x80\xFF"), "\u00E9t\u0080\u00FF");
}

}  // namespace
}  // namespace intake
