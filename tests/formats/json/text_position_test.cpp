#include "formats/json/text_position.h"

#include <gtest/gtest.h>

#include <string>

namespace intake {
namespace {

std::string place(std::string_view text, size_t offset, const std::vector<size_t>& decoded = {}) {
    const TextPosition position = locate(text, offset, decoded);
    return std::to_string(position.line) + ":" + std::to_string(position.column);
}

TEST(TextPosition, TheFirstByteIsAtLineOneColumnOne) {
    EXPECT_EQ(place("abc", 0), "1:1");
    EXPECT_EQ(place("", 0), "1:1");
}

TEST(TextPosition, TheEndOfTheTextIsAPlaceToo) {
    EXPECT_EQ(place("abc", 3), "1:4");
    EXPECT_EQ(place("abc\n", 4), "2:1");
}

TEST(TextPosition, ALineFeedBelongsToTheLineThatItEnds) {
    EXPECT_EQ(place("ab\ncd", 2), "1:3");
    EXPECT_EQ(place("ab\ncd", 3), "2:1");
    EXPECT_EQ(place("\n\n\n", 2), "3:1");
}

TEST(TextPosition, LineFeedsBehindThePlaceDoNotCount) {
    EXPECT_EQ(place("a\nb\nc\n", 2), "2:1");
}

TEST(TextPosition, DecodedLineFeedsDoNotCount) {
    EXPECT_EQ(place("a\nb\nc", 4, {1}), "2:1");
    EXPECT_EQ(place("a\nb\nc", 4, {3}), "2:3");
    EXPECT_EQ(place("a\nb\nc", 4, {1, 3}), "1:5");
    EXPECT_EQ(place("a\n\n\nb", 4, {1, 2, 3}), "1:5");
}

}  // namespace
}  // namespace intake
