#include "formats/json/json_select.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/formats/json/parse.h"

namespace intake {
namespace {

/// The selected nodes in their order, separated by blanks.
std::string select(std::string_view source, std::string_view path) {
    const JsonDocument document = parse(source);
    std::string text;
    for (const JsonDocument::Node node : selectNodes(document, parsePath(path))) {
        text.append(text.empty() ? "" : " ").append(outline(document, node));
    }
    return text;
}

TEST(JsonSelect, APathWithoutStepsSelectsTheRoot) {
    EXPECT_EQ(select(R"({"a":1})", "/"), "{a: 1}");
    EXPECT_EQ(select("[1,2]", "//"), "[1, 2]");
    EXPECT_EQ(select("7.50", " "), "7.50");
}

TEST(JsonSelect, ANameSelectsTheMemberOfThatName) {
    EXPECT_EQ(select(R"({"a":1,"b":"x","c":{"a":2}})", "b"), "\"x\"");
    EXPECT_EQ(select(R"({"a":1,"b":"x","c":{"a":2}})", "c"), "{a: 2}");
}

TEST(JsonSelect, NamesAreComparedByteByByte) {
    EXPECT_EQ(select(R"({"Items":1,"items ":2,"items":3,"item":4})", "items"), "3");
    EXPECT_EQ(select("{\"Z\xC3\xBCrich\":1,\"Z\xC3\x9Crich\":2}", "Z\xC3\xBCrich"), "1");
    EXPECT_EQ(select(R"({"a\tb":1})", "a\tb"), "1");
}

TEST(JsonSelect, ANameThatIsMissingSelectsNothing) {
    EXPECT_EQ(select(R"({"a":{"b":1}})", "b"), "");
    EXPECT_EQ(select(R"({"a":{"b":1}})", "a/c"), "");
    EXPECT_EQ(select(R"({})", "a"), "");
    EXPECT_EQ(select(R"([])", "*"), "");
}

TEST(JsonSelect, AScalarHasNoChildren) {
    EXPECT_EQ(select(R"("text")", "*"), "");
    EXPECT_EQ(select(R"({"a":"text"})", "a/*"), "");
    EXPECT_EQ(select(R"({"a":"text"})", "a//*"), "");
    EXPECT_EQ(select("null", "//a"), "");
}

TEST(JsonSelect, AStarSelectsEveryMemberInOrder) {
    EXPECT_EQ(select(R"({"c":1,"a":"x","b":{"d":true}})", "*"), "1 \"x\" {d: true}");
}

TEST(JsonSelect, MembersOfTheSameNameAreAllSelected) {
    EXPECT_EQ(select(R"({"a":1,"b":2,"a":3})", "a"), "1 3");
}

TEST(JsonSelect, AnArrayThatMatchesPassesItsElements) {
    EXPECT_EQ(select(R"({"a":[1,"x",null,{"b":2}]})", "a"), "1 \"x\" null {b: 2}");
    EXPECT_EQ(select(R"({"a":[]})", "a"), "");
}

TEST(JsonSelect, ElementsThatAreArraysPassAsTheyAre) {
    EXPECT_EQ(select(R"({"grid":[[1,2],[3,[4]]]})", "grid"), "[1, 2] [3, [4]]");
}

TEST(JsonSelect, AFurtherStarOpensTheElementsOfArraysInArrays) {
    EXPECT_EQ(select(R"({"grid":[[1,2],[3,[4]]]})", "grid/*"), "1 2 3 4");
}

TEST(JsonSelect, AStarOpensAnArrayAtTheRootAndArraysInsideIt) {
    EXPECT_EQ(select(R"([{"a":1},{"a":2}])", "*"), "{a: 1} {a: 2}");
    EXPECT_EQ(select(R"([[1,2],3])", "*"), "1 2 3");
    EXPECT_EQ(select(R"([{"a":1},{"a":2}])", "*/a"), "1 2");
}

TEST(JsonSelect, AnEmptyNameSelectsElementsOfAnArrayAtTheRoot) {
    EXPECT_EQ(select("[[1,2],[3],4]", "[0]"), "1 3 4");
}

TEST(JsonSelect, StepsContinueFromEachMatchInTurn) {
    EXPECT_EQ(select(R"({"g":[{"n":[1,2]},{"m":9},{"n":3}],"n":4})", "g/n"), "1 2 3");
}

TEST(JsonSelect, AtAnyDepthNodesComeInTheOrderOfTheDocument) {
    EXPECT_EQ(select(R"({"a":{"x":{"b":1},"b":2},"c":[{"b":3},[{"b":4}]],"b":5})", "//b"),
              "1 2 3 4 5");
}

TEST(JsonSelect, ALeadingSlashFindsChildrenOfTheRootToo) {
    EXPECT_EQ(select(R"({"b":1,"a":{"b":2}})", "/b"), "1 2");
}

TEST(JsonSelect, AtAnyDepthWhatMatchedIsNotSearchedAgain) {
    EXPECT_EQ(select(R"({"b":{"b":1},"a":{"b":[{"b":2}]}})", "//b"), "{b: 1} {b: 2}");
}

TEST(JsonSelect, AtAnyDepthBeginsBelowEachMatchOfTheStepBefore) {
    EXPECT_EQ(select(R"({"a":[{"x":{"b":1}},{"y":2}],"b":3,"c":{"b":4}})", "a//b"), "1");
}

TEST(JsonSelect, AStepAfterOneAtAnyDepthIsToChildrenAgain) {
    EXPECT_EQ(select(R"({"x":{"a":{"b":1,"c":{"b":2}}}})", "//a/b"), "1");
    EXPECT_EQ(select(R"({"x":{"a":{"b":1,"c":{"b":2}}}})", "//a//b"), "1 2");
}

TEST(JsonSelect, AStarAtAnyDepthMatchesTheChildrenAndGoesNoDeeper) {
    EXPECT_EQ(select(R"({"a":{"b":1},"c":2})", "//*"), "{b: 1} 2");
}

TEST(JsonSelect, AnIndexTakesThatElement) {
    EXPECT_EQ(select(R"({"a":["x","y","z"]})", "a[0]"), "\"x\"");
    EXPECT_EQ(select(R"({"a":["x","y","z"]})", "a[2]"), "\"z\"");
    EXPECT_EQ(select(R"({"a":[[1,{"b":2}],{"c":[3]},4]})", "a[2]"), "4");
}

TEST(JsonSelect, AnIndexPastTheEndSkipsThatArray) {
    EXPECT_EQ(select(R"({"a":["x","y"]})", "a[2]"), "");
    EXPECT_EQ(select(R"({"a":[]})", "a[0]"), "");
    EXPECT_EQ(select(R"({"a":["x"]})", "a[99999999999]"), "");
    EXPECT_EQ(select(R"({"r":[{"a":[1]},{"a":[2,3]},{"a":[]},{"a":[4,5]}]})", "r/a[1]"), "3 5");
}

TEST(JsonSelect, AnIndexOnWhatIsNoArrayHasNoEffect) {
    EXPECT_EQ(select(R"({"a":{"b":1}})", "a[5]"), "{b: 1}");
    EXPECT_EQ(select(R"({"a":"x"})", "a[5]"), "\"x\"");
}

TEST(JsonSelect, AnIndexHoldsForEveryArrayThatMatches) {
    EXPECT_EQ(select(R"({"a":[1,2],"b":{"a":[3,4]}})", "//a[1]"), "2 4");
    EXPECT_EQ(select(R"([[1,2],[3,4]])", "*[1]"), "2 4");
}

TEST(JsonSelect, AFilterKeepsTheElementsWhoseMemberReadsAsTheValue) {
    EXPECT_EQ(select(R"({"list":[{"id":6,"n":"a"},{"id":7,"n":"b"},{"n":"c"},{"id":"7"},7]})",
                     "list[@id = 7]"),
              "{id: 7, n: \"b\"} {id: \"7\"}");
}

TEST(JsonSelect, AFilterTestsAnObjectItself) {
    EXPECT_EQ(select(R"({"a":{"id":7}})", "a[id=7]"), "{id: 7}");
    EXPECT_EQ(select(R"({"a":{"id":8}})", "a[id=7]"), "");
    EXPECT_EQ(select(R"([{"id":7,"v":1},{"id":8,"v":2}])", "*[id=8]/v"), "2");
}

TEST(JsonSelect, AFilterNeverHoldsForAScalarOrAnArray) {
    EXPECT_EQ(select(R"({"a":"7","b":7,"c":[7,[{"id":7}]]})", "*[id=7]"), "");
}

TEST(JsonSelect, AFilterComparesANumberByItsCharacters) {
    constexpr auto SOURCE = R"({"a":[{"p":7.50},{"p":7.5},{"p":75e-1},{"p":-0}]})";
    EXPECT_EQ(select(SOURCE, "a[p=7.50]"), "{p: 7.50}");
    EXPECT_EQ(select(SOURCE, "a[p=7.5]"), "{p: 7.5}");
    EXPECT_EQ(select(SOURCE, "a[p=75e-1]"), "{p: 75e-1}");
    EXPECT_EQ(select(SOURCE, "a[p=0]"), "");
}

TEST(JsonSelect, AFilterReadsBoolsAndNullAsWords) {
    constexpr auto SOURCE = R"({"a":[{"v":true},{"v":false},{"v":null},{"v":1},{"v":""}]})";
    EXPECT_EQ(select(SOURCE, "a[v=true]"), "{v: true}");
    EXPECT_EQ(select(SOURCE, "a[v=false]"), "{v: false}");
    EXPECT_EQ(select(SOURCE, "a[v=null]"), "{v: null}");
    EXPECT_EQ(select(SOURCE, "a[v=1]"), "{v: 1}");
    EXPECT_EQ(select(SOURCE, "a[v=]"), "{v: \"\"}");
}

TEST(JsonSelect, AFilterReadsAContainerAsAnEmptyText) {
    EXPECT_EQ(select(R"({"a":[{"v":{"x":1}},{"v":[1]},{"v":"y"}]})", "a[v=]"),
              "{v: {x: 1}} {v: [1]}");
}

TEST(JsonSelect, AFilterComparesTextsExactly) {
    constexpr auto SOURCE =
        R"({"a":[{"t":"Knots"},{"t":"knots"},{"t":" Knots"},{"t":"Kn\u006fts"}]})";
    EXPECT_EQ(select(SOURCE, "a[t=Knots]"), "{t: \"Knots\"} {t: \"Knots\"}");
}

TEST(JsonSelect, AFilterLooksAtTheFirstOfSeveralMembersOfItsName) {
    EXPECT_EQ(select(R"({"a":[{"id":1,"id":2},{"id":2,"id":1}]})", "a[id=2]"), "{id: 2, id: 1}");
}

TEST(JsonSelect, AFilterMayNameAMemberWithoutAName) {
    EXPECT_EQ(select(R"({"a":[{"":1},{"x":1}]})", "a[=1]"), "{: 1}");
}

TEST(JsonSelect, StepsContinueBehindFiltersAndIndexes) {
    EXPECT_EQ(select(R"({"c":[{"id":1,"s":[{"n":"a"},{"n":"b"}]},{"id":2,"s":[{"n":"c"}]}]})",
                     "c[id=1]/s[1]/n"),
              "\"b\"");
}

TEST(JsonSelect, AMatchThatFailsItsFilterIsNotSearchedDeeper) {
    EXPECT_EQ(select(R"({"a":{"id":1,"a":{"id":7}}})", "//a[id=7]"), "");
}

}  // namespace
}  // namespace intake
