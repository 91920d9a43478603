// Strings are decoded where they stand, so the text that an error is located in is no longer the
// source. These tests hold the place to the source all the same.

#include <gtest/gtest.h>

#include <string>

#include "tests/formats/json/parse.h"

namespace intake {
namespace {

/// The line and column that the refusal of a text names.
std::string place(std::string_view source) {
    const std::string error = parseError(source);
    return error.substr(0, error.find(':'));
}

TEST(JsonErrorPosition, LinesAndColumnsCountFromOne) {
    EXPECT_EQ(place("x"), "line 1, column 1");
    EXPECT_EQ(place(" x"), "line 1, column 2");
    EXPECT_EQ(place("\nx"), "line 2, column 1");
    EXPECT_EQ(place("{\n  \"a\": 1,\n  \"b\": x\n}\n"), "line 3, column 8");
}

TEST(JsonErrorPosition, ALineFeedEndsALineAndACarriageReturnIsAColumn) {
    EXPECT_EQ(place("[1,\r\n 2,\r\n x]"), "line 3, column 2");
    EXPECT_EQ(place("[1,\r x]"), "line 1, column 6");
}

TEST(JsonErrorPosition, AColumnIsABytePosition) {
    EXPECT_EQ(place("[\"\xC3\xBC\" x]"), "line 1, column 7");
}

TEST(JsonErrorPosition, TheByteOrderMarkCounts) {
    EXPECT_EQ(place("\xEF\xBB\xBFx"), "line 1, column 4");
    EXPECT_EQ(place("\xEF\xBB\xBF\nx"), "line 2, column 1");
}

TEST(JsonErrorPosition, AnEscapedLineEndInAStringBeforeIsNoLine) {
    EXPECT_EQ(place(R"(["a\nb\u000Ac", x])"), "line 1, column 17");
    EXPECT_EQ(place("[\"a\\nb\",\n x]"), "line 2, column 2");
}

TEST(JsonErrorPosition, AnEscapedLineEndInANameBeforeIsNoLine) {
    EXPECT_EQ(place(R"({"\n\n": x})"), "line 1, column 10");
    EXPECT_EQ(place("{\"\\n\": 1,\n \"\\n\"\n: [\n\"\\n\", x]}"), "line 4, column 7");
}

TEST(JsonErrorPosition, AnEscapedLineEndInANameWithoutAValueIsNoLine) {
    EXPECT_EQ(place(R"({"\n\na" x})"), "line 1, column 10");
    EXPECT_EQ(place("{\"\\n\"\n x}"), "line 2, column 2");
}

TEST(JsonErrorPosition, AnEscapedLineEndInTheStringThatFailsIsNoLine) {
    EXPECT_EQ(place(R"(["a\n\n\nb\q"])"), "line 1, column 11");
    EXPECT_EQ(place("[\n \"\\n\\n\\q\"]"), "line 2, column 7");
    EXPECT_EQ(place(R"({"\n\n\q":1})"), "line 1, column 7");
}

TEST(JsonErrorPosition, LinesBehindAnEmptyStringCount) {
    EXPECT_EQ(place("[\"\",\nx]"), "line 2, column 1");
    EXPECT_EQ(place("{\"a\": \"\",\n\n  x}"), "line 3, column 3");
    EXPECT_EQ(place("{\"\":\n x}"), "line 2, column 2");
    EXPECT_EQ(place("{\"\"\n x}"), "line 2, column 2");
    EXPECT_EQ(place("[\"\\n\", \"\",\n\n\"\\n\\q\"]"), "line 3, column 4");
}

TEST(JsonErrorPosition, LinesBehindADecodedStringCount) {
    EXPECT_EQ(place("[\"\\n\\n\\n\\n\",\n\n1,\nx]"), "line 4, column 1");
    EXPECT_EQ(place("{\"a\": {\"b\": [\"\\n\"\n]\n}\n,x}"), "line 4, column 2");
}

TEST(JsonErrorPosition, AnErrorBehindALineEndInTheFailingStringIsOnItsOwnLine) {
    EXPECT_EQ(place("[\"a\\nb\n\"]"), "line 1, column 7");
}

TEST(JsonErrorPosition, WhatStandsBehindTheDocumentIsLocatedToo) {
    EXPECT_EQ(place("{\"a\":\"\\n\"}\n\n  x"), "line 3, column 3");
    EXPECT_EQ(place("\"\"\n\nx"), "line 3, column 1");
    EXPECT_EQ(place(std::string_view("\"\"\n\n\0", 5)), "line 3, column 1");
}

TEST(JsonErrorPosition, TheEndOfTheTextIsAPlaceToo) {
    EXPECT_EQ(place(""), "line 1, column 1");
    EXPECT_EQ(place("[1,\n"), "line 2, column 1");
}

TEST(JsonErrorPosition, TheFirstLoneSurrogateIsToldWhateverStandsBehindIt) {
    EXPECT_EQ(place("[\"\\n\",\n \"a\\uDC00\",\n\n\"\\uDC01\", x]"), "line 2, column 4");
}

}  // namespace
}  // namespace intake
