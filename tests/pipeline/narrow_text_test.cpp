#include "pipeline/narrow_text.h"

#include <gtest/gtest.h>

namespace intake {
namespace {

constexpr int32_t UTF_8 = 0;
constexpr int32_t ISO_8859_1 = 2;

std::string narrowed(std::string text, size_t start, int32_t encoding) {
    narrowFrom(text, start, encoding);
    return text;
}

TEST(NarrowText, IsUtf8AsItIsUnlessTheEncodingIsIso88591) {
    for (const int32_t encoding : {UTF_8, 1, 3, -1}) {
        EXPECT_EQ(narrowed("\xC3\xA9 \xE2\x82\xAC", 0, encoding), "\xC3\xA9 \xE2\x82\xAC");
        EXPECT_EQ(toUtf8("\xC3\xA9", encoding), "\xC3\xA9");
    }
}

TEST(NarrowText, InIso88591HasAQuestionMarkForEachCharacterThatItLacks) {
    EXPECT_EQ(narrowed("\xC3\xA9t\xC3\xA9 \xC2\xA0|", 0, ISO_8859_1), "\xE9t\xE9 \xA0|");
    EXPECT_EQ(narrowed("a\xE2\x82\xAC"
                       "b\xF0\x9F\x98\x80"
                       "c\xC4\x80",
                       0, ISO_8859_1),
              "a?b?c?");
}

TEST(NarrowText, ConvertsOnlyWhatStandsBehindTheStart) {
    EXPECT_EQ(narrowed("\xC3\xA9\xC3\xA9", 2, ISO_8859_1), "\xC3\xA9\xE9");
    EXPECT_EQ(narrowed("\xC3\xA9", 2, ISO_8859_1), "\xC3\xA9");
}

TEST(NarrowText, TakesBytesThatAreNoUtf8) {
    EXPECT_EQ(narrowed("a\x80"
                       "b\xC3",
                       0, ISO_8859_1),
              "a?b\xC0");
}

TEST(NarrowText, OfIso88591IsWidened) {
    EXPECT_EQ(toUtf8("\xE9t\xE9 \xA0", ISO_8859_1), "\xC3\xA9t\xC3\xA9 \xC2\xA0");
}

}  // namespace
}  // namespace intake
