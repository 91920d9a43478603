#include <gtest/gtest.h>

#include <string>

#include "tests/workbench/cobalt/show.h"

namespace cobalt {
namespace {

TEST(ScriptError, AScriptThatDoesNotParseChangesNothing) {
    Store store;
    ASSERT_FALSE(store.execute("a=1;T[0-1]=x,y;"));
    const auto error = store.execute("a=2;b=3;T[0]=z;c={");
    ASSERT_TRUE(error);
    EXPECT_EQ(show(*error), "1:18 expected a '}' for this '{'");
    EXPECT_EQ(show(store), "a = 1\nT = [0: \"x\", 1: \"y\"]\n");
}

TEST(ScriptError, CountsLinesAndColumnsFromOne) {
    EXPECT_EQ(execute("oops"), "1:1 expected an assignment such as name=value;, found 'oops'");
    EXPECT_EQ(execute("a=1;\r\n\n  oops\r\nmore"),
              "3:3 expected an assignment such as name=value;, found 'oops'");
}

TEST(ScriptError, CountsColumnsInCharacters) {
    EXPECT_EQ(execute("Zürich={};東京={} x;"),
              "1:17 expected ',' or ';' after the value, found 'x;'");
}

TEST(ScriptError, AnAssignmentEndsWithASemicolon) {
    EXPECT_EQ(execute("a=1"), "1:4 expected ',' or ';' after the value, found the end of the text");
    EXPECT_EQ(execute("s={a=1;}\nb=2;"), "2:1 expected ',' or ';' after the value, found 'b=2;'");
}

TEST(ScriptError, AFieldHasAName) {
    EXPECT_EQ(execute("a=1;={b=2;};"), "1:5 expected the name of a field, found '={b=2;};'");
    EXPECT_EQ(execute("[0]=1;"), "1:1 expected the name of a field, found '[0]=1;'");
}

TEST(ScriptError, ABracketIsClosed) {
    EXPECT_EQ(execute("T[0=1;"), "1:2 expected a ']' for this '['");
}

TEST(ScriptError, AnEqualsSignFollowsTheBracket) {
    EXPECT_EQ(execute("T[0]1;"), "1:5 expected '=' after the ']', found '1;'");
    EXPECT_EQ(execute("T[0][1]=1;"), "1:5 expected '=' after the ']', found '[1]=1;'");
}

TEST(ScriptError, AQuotedTextIsClosed) {
    EXPECT_EQ(execute("a=1;b=\"\"x;"), "1:7 expected '\"\"' at the end of this quoted text");
    EXPECT_EQ(execute("a=1;b=\"x"), "1:7 expected '\";' at the end of this quoted text");
}

TEST(ScriptError, ABraceIsClosed) {
    EXPECT_EQ(execute("T[0]={{a=1;};"), "1:6 expected a '}' for this '{'");
    EXPECT_EQ(execute("s={a={b=1;"), "1:6 expected a '}' for this '{'");
}

TEST(ScriptError, ABraceTooManyIsNoAssignment) {
    EXPECT_EQ(execute("s={a=1;};};"),
              "1:10 expected an assignment such as name=value;, found '};'");
}

TEST(ScriptError, AnElementOfAListIsEnded) {
    EXPECT_EQ(execute("T={{a=1;}{a=2;}};"),
              "1:10 expected ',' or ';' after the element, found '{a=2;}};'");
}

TEST(ScriptError, OnlyARangeMayStandInAList) {
    EXPECT_EQ(execute("T={[key]=1;};"),
              "1:4 expected a range such as [0-2] in a list, found '[key]=1;};'");
}

TEST(ScriptError, ShowsAtMostTwentyBytesAndNoPartOfACharacter) {
    EXPECT_EQ(execute("T[0]1234567890123456789ü0123456789=1;"),
              "1:5 expected '=' after the ']', found '1234567890123456789ü'");
}

TEST(ScriptError, AMillionNestedBracesAreAnError) {
    const std::string braces = "a=" + std::string(1000000, '{');
    EXPECT_EQ(execute(braces), "1:503 expected at most 500 nested braces");
}

TEST(ScriptError, AMillionNestedStructuresAreAnError) {
    std::string nested = "a=";
    for (int i = 0; i < 1000000; ++i)
        nested += "{a=";
    EXPECT_EQ(execute(nested), "1:1503 expected at most 500 nested braces");
}

TEST(Script, FiveHundredNestedBracesAreAValue) {
    const std::string script = "a=" + std::string(500, '{') + std::string(500, '}') + ";";
    std::string shown = "a = ";
    for (int i = 0; i < 499; ++i)
        shown += "[0: ";
    EXPECT_EQ(execute(script), shown + "{}" + std::string(499, ']') + "\n");
}

}  // namespace
}  // namespace cobalt
