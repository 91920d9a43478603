#include "formats/json/JsonDocument.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/formats/json/parse.h"

namespace intake {
namespace {

using Type = JsonDocument::Type;

std::string outlineOf(std::string_view source) {
    return outline(parse(source));
}

TEST(JsonDocument, TheRootMayBeOfAnyType) {
    EXPECT_EQ(parse("null").type(JsonDocument::ROOT), Type::NULL_VALUE);
    EXPECT_EQ(parse("\"x\"").type(JsonDocument::ROOT), Type::STRING);
    EXPECT_EQ(parse("-1").type(JsonDocument::ROOT), Type::NUMBER);
    EXPECT_EQ(parse("false").type(JsonDocument::ROOT), Type::BOOL);
    EXPECT_EQ(parse("[]").type(JsonDocument::ROOT), Type::ARRAY);
    EXPECT_EQ(parse("{}").type(JsonDocument::ROOT), Type::OBJECT);
}

TEST(JsonDocument, OnlyArraysAndObjectsAreContainers) {
    EXPECT_TRUE(parse("[]").isContainer(JsonDocument::ROOT));
    EXPECT_TRUE(parse("{}").isContainer(JsonDocument::ROOT));
    for (const char* scalar : {"null", "\"x\"", "1", "true"}) {
        EXPECT_FALSE(parse(scalar).isContainer(JsonDocument::ROOT)) << scalar;
    }
}

TEST(JsonDocument, NodesStandInTheOrderOfTheSource) {
    EXPECT_EQ(outlineOf(R"( {"b" : [1, "x", {"c":null}, []], "a":{"d":true,"e":{}} } )"),
              R"({b: [1, "x", {c: null}, []], a: {d: true, e: {}}})");
}

TEST(JsonDocument, AllFourWhiteSpaceCharactersMayStandBetweenTokens) {
    EXPECT_EQ(outlineOf(" \t\r\n{ \t\r\n\"a\" \t\r\n: \t\r\n[ \t\r\n1 \t\r\n, \t\r\n2 ] } \t\r\n"),
              "{a: [1, 2]}");
}

TEST(JsonDocument, MembersHaveNamesAndElementsAndTheRootHaveNone) {
    const JsonDocument document = parse(R"({"list":[5]})");
    EXPECT_EQ(document.name(JsonDocument::ROOT), "");
    EXPECT_EQ(document.name(1), "list");
    EXPECT_EQ(document.name(2), "");
}

TEST(JsonDocument, AMemberMayHaveAnEmptyName) {
    const JsonDocument document = parse(R"({"":1})");
    EXPECT_EQ(document.name(1), "");
    EXPECT_EQ(document.find(JsonDocument::ROOT, ""), 1U);
}

TEST(JsonDocument, AContainerCountsItsOwnChildrenOnly) {
    const JsonDocument document = parse(R"({"a":[1,[2,3],{"b":4}],"c":5})");
    EXPECT_EQ(document.childCount(JsonDocument::ROOT), 2U);
    EXPECT_EQ(document.childCount(1), 3U);
    EXPECT_EQ(parse("[]").childCount(JsonDocument::ROOT), 0U);
}

TEST(JsonDocument, BehindANodeIsWhatFollowsItsLastDescendant) {
    const JsonDocument document = parse(R"({"a":[1,[2,3],{"b":4}],"c":5})");
    EXPECT_EQ(document.behind(1), 8U);
    EXPECT_EQ(document.name(8), "c");
    EXPECT_EQ(document.behind(JsonDocument::ROOT), 9U);
}

TEST(JsonDocument, DuplicateMembersAreAllKept) {
    EXPECT_EQ(outlineOf(R"({"a":1,"b":2,"a":3})"), "{a: 1, b: 2, a: 3}");
}

TEST(JsonDocument, FindGivesTheFirstMemberOfAName) {
    const JsonDocument document = parse(R"({"x":{"a":0},"a":1,"a":2})");
    EXPECT_EQ(document.asString(document.find(JsonDocument::ROOT, "a")), "1");
}

TEST(JsonDocument, FindGivesNoneForANameThatIsMissingAndOutsideObjects) {
    EXPECT_EQ(parse(R"({"a":1})").find(JsonDocument::ROOT, "b"), JsonDocument::NONE);
    EXPECT_EQ(parse(R"({"a":1})").find(JsonDocument::ROOT, ""), JsonDocument::NONE);
    EXPECT_EQ(parse("{}").find(JsonDocument::ROOT, "a"), JsonDocument::NONE);
    EXPECT_EQ(parse("[1]").find(JsonDocument::ROOT, ""), JsonDocument::NONE);
    EXPECT_EQ(parse("\"a\"").find(JsonDocument::ROOT, "a"), JsonDocument::NONE);
}

TEST(JsonDocument, AnArrayWithoutContainersIsFlat) {
    EXPECT_TRUE(parse("[]").isFlatArray(JsonDocument::ROOT));
    EXPECT_TRUE(parse(R"([1,"x",true,null])").isFlatArray(JsonDocument::ROOT));
}

TEST(JsonDocument, AnArrayWithAnyContainerIsNotFlat) {
    EXPECT_FALSE(parse("[[]]").isFlatArray(JsonDocument::ROOT));
    EXPECT_FALSE(parse("[1,{}]").isFlatArray(JsonDocument::ROOT));
    EXPECT_FALSE(parse("[[1],2]").isFlatArray(JsonDocument::ROOT));
    EXPECT_FALSE(parse(R"([1,{"a":1},2])").isFlatArray(JsonDocument::ROOT));
}

TEST(JsonDocument, WhatIsNoArrayIsNotFlat) {
    EXPECT_FALSE(parse("{}").isFlatArray(JsonDocument::ROOT));
    EXPECT_FALSE(parse("1").isFlatArray(JsonDocument::ROOT));
}

TEST(JsonDocument, ANumberKeepsItsCharacters) {
    for (const char* number : {"0", "-0", "7.50", "1234567", "1E5", "1e+05", "-0.0e-0", "1e400"}) {
        EXPECT_EQ(outlineOf(number), number);
        EXPECT_EQ(outlineOf(inArray(number)), inArray(number));
    }
    const std::string digits(400, '9');
    EXPECT_EQ(outlineOf(digits), digits);
}

TEST(JsonDocument, WordsReadAsThemselves) {
    EXPECT_EQ(outlineOf("[true,false,null]"), "[true, false, null]");
    EXPECT_TRUE(parse("true").asBool(JsonDocument::ROOT));
    EXPECT_FALSE(parse("false").asBool(JsonDocument::ROOT));
}

TEST(JsonDocument, AContainerHasNoText) {
    EXPECT_EQ(parse(R"({"a":1})").asString(JsonDocument::ROOT), "");
    EXPECT_EQ(parse("[1]").asString(JsonDocument::ROOT), "");
}

TEST(JsonDocument, EscapesInStringsAndNamesAreDecoded) {
    EXPECT_EQ(outlineOf(R"(["\"\\\/\b\f\n\r\t"])"), "[\"\"\\/\b\f\n\r\t\"]");
    EXPECT_EQ(outlineOf(R"({"\u0041\n":"\u00e9\u20AC"})"), "{A\n: \"\xC3\xA9\xE2\x82\xAC\"}");
}

TEST(JsonDocument, AStringThatFollowsADecodedOneIsWhole) {
    EXPECT_EQ(outlineOf(R"({"a\u0042c":"x\ty","\u0064ef":"\u0067","h":"i"})"),
              "{aBc: \"x\ty\", def: \"g\", h: \"i\"}");
}

TEST(JsonDocument, AnEscapedZeroCharacterIsKept) {
    const JsonDocument document = parse(R"({"a\u0000b":"c\u0000d"})");
    EXPECT_EQ(document.name(1), std::string_view("a\0b", 3));
    EXPECT_EQ(document.asString(1), std::string_view("c\0d", 3));
}

TEST(JsonDocument, ASurrogatePairIsOneCharacter) {
    EXPECT_EQ(outlineOf(R"("\uD83D\uDE00")"), "\"\xF0\x9F\x98\x80\"");
}

TEST(JsonDocument, EveryLengthOfUtf8IsAccepted) {
    constexpr auto SOURCE =
        "\"A\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF\"";
    EXPECT_EQ(outlineOf(SOURCE), SOURCE);
}

TEST(JsonDocument, AByteOrderMarkIsSkipped) {
    EXPECT_EQ(outlineOf("\xEF\xBB\xBF{\"a\":1}"), "{a: 1}");
    EXPECT_EQ(outlineOf("\xEF\xBB\xBF 7"), "7");
}

TEST(JsonDocument, OnlyOneByteOrderMarkIsSkipped) {
    EXPECT_EQ(parseError("\xEF\xBB\xBF\xEF\xBB\xBF{}"), "line 1, column 4: Invalid value.");
}

/// Arrays or objects in one another, as deep as `depth`.
std::string nested(size_t depth, std::string_view opening, std::string_view inside,
                   std::string_view closing) {
    std::string text;
    text.reserve(depth * (opening.size() + closing.size()) + inside.size());
    for (size_t i = 0; i < depth; ++i) {
        text += opening;
    }
    text += inside;
    for (size_t i = 0; i < depth; ++i) {
        text += closing;
    }
    return text;
}

constexpr size_t DEEP = 1000000;

TEST(JsonDocument, ArraysMayBeAMillionLevelsDeep) {
    const JsonDocument document = parse(nested(DEEP, "[", "", "]"));
    EXPECT_EQ(document.behind(JsonDocument::ROOT), DEEP);
    EXPECT_EQ(document.childCount(DEEP - 2), 1U);
    EXPECT_EQ(document.childCount(DEEP - 1), 0U);
}

TEST(JsonDocument, ObjectsMayBeAMillionLevelsDeep) {
    const JsonDocument document = parse(nested(DEEP, "{\"a\":", "7", "}"));
    EXPECT_EQ(document.behind(JsonDocument::ROOT), DEEP + 1);
    EXPECT_EQ(document.asString(DEEP), "7");
}

TEST(JsonDocument, AMillionLevelsThatAreNotClosedAreRefused) {
    EXPECT_EQ(parseError(nested(DEEP, "[", "", "")), "line 1, column 1000001: Invalid value.");
}

}  // namespace
}  // namespace intake
