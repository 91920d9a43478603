#include "workbench/cli/display_text.h"

#include <gtest/gtest.h>

using workbench::displayWidth;
using workbench::fitted;
using workbench::toUtf8;

TEST(DisplayText, ValidUtf8StaysAsItIs) {
    EXPECT_EQ(toUtf8("Müller 東京"), "Müller 東京");
}

TEST(DisplayText, WhatIsNoUtf8IsReadAsLatin1) {
    EXPECT_EQ(toUtf8("M\xFCller"), "Müller");
}

TEST(DisplayText, OverlongFormsAndSurrogatesAreNoUtf8) {
    EXPECT_EQ(toUtf8("\xC0\xAF"), "À¯");
    EXPECT_EQ(toUtf8("\xED\xA0\x80"), "í\xC2\xA0\xC2\x80");
}

TEST(DisplayText, WidthCountsCharactersNotBytes) {
    EXPECT_EQ(displayWidth("Müller"), 6U);
}

TEST(DisplayText, EastAsianCharactersAndEmojiAreTwoColumnsWide) {
    EXPECT_EQ(displayWidth("東京"), 4U);
    EXPECT_EQ(displayWidth("⚽🏆"), 3U);
    EXPECT_EQ(displayWidth("한국"), 4U);
}

TEST(DisplayText, CombiningMarksTakeNoColumn) {
    EXPECT_EQ(displayWidth("e\u0301"), 1U);
}

TEST(DisplayText, ATextThatFitsIsNotCut) {
    EXPECT_EQ(fitted("Arsenal", 7), "Arsenal");
}

TEST(DisplayText, ATextThatDoesNotFitEndsWithAnEllipsis) {
    EXPECT_EQ(fitted("Arsenal", 6), "Arsen…");
    EXPECT_EQ(fitted("東京都", 4), "東…");
}

TEST(DisplayText, ControlCharactersBecomeBlanks) {
    EXPECT_EQ(fitted("a\nb\tc", 9), "a b c");
    EXPECT_EQ(fitted("\x7F\u0080\u009B31m\u00A0", 9), "   31m\u00A0");
}
