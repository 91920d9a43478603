// The small languages of settings, as the explanations take them apart.

#include <gtest/gtest.h>

#include "workbench/probe/json_path_text.h"
#include "workbench/probe/sheet_fields.h"
#include "workbench/probe/xpath_text.h"

namespace probe {

namespace {

TEST(JsonPathText, IsTakenApartAsThePluginDoes) {
    const auto segments = pathSegments(" data //rows[2]/ name ");
    ASSERT_EQ(segments.size(), 3U);
    EXPECT_EQ(segments[0].text, "data");
    EXPECT_TRUE(segments[1].anyDepth);
    EXPECT_EQ(nameIn(segments[1]), "rows");
    EXPECT_EQ(renamed(segments[1], "lines").text, "lines[2]");
    EXPECT_EQ(pathOf(segments), "data//rows[2]/name");
    EXPECT_EQ(pathOf(pathSegments("/rows")), "/rows");
}

TEST(JsonPathText, InOtherNotationsIsConverted) {
    EXPECT_EQ(fromJsonPath("$.data.rows[*].name"), "data/rows/name");
    EXPECT_EQ(fromJsonPath("data.rows"), "data/rows");
    EXPECT_EQ(fromJsonPath("$..name"), "//name");
    EXPECT_EQ(fromJsonPath("$['two words'][0].a"), "two words[0]/a");
    EXPECT_EQ(fromJsonPath("$.rows[?(@.id == '7')]"), "rows[@id=7]");
}

TEST(JsonPathText, OfThePluginIsLeftAlone) {
    EXPECT_EQ(fromJsonPath("data/v1.2"), "");
    EXPECT_EQ(fromJsonPath("data"), "");
}

TEST(JsonPathText, CannotNameEveryMember) {
    EXPECT_TRUE(canBeNamed("two words"));
    for (const char* name : {"", "*", "a/b", "a[0]", " a", "a\t"})
        EXPECT_FALSE(canBeNamed(name)) << name;
}

TEST(XPathText, DeclaresANamespaceOfAnyAddress) {
    EXPECT_EQ(declarationOf("d", "urn:o'neil&\"<"), "xmlns:d=\"urn:o'neil&amp;&quot;&lt;\"");
}

TEST(XPathText, OfALocationPathHasSteps) {
    const LocationPath path = locationPath("/a:feed//item[@id='x/y'][1]/@name");
    ASSERT_EQ(path.steps.size(), 3U);
    EXPECT_TRUE(path.isAbsolute);
    EXPECT_EQ(path.steps[0].prefix(), "a");
    EXPECT_EQ(path.steps[0].localName(), "feed");
    EXPECT_TRUE(path.steps[1].anyDepth);
    EXPECT_EQ(path.steps[1].predicates, "[@id='x/y'][1]");
    EXPECT_TRUE(path.steps[2].isAttribute());
    EXPECT_EQ(path.text(), "/a:feed//item[@id='x/y'][1]/@name");
    EXPECT_EQ(path.text(2), "/a:feed//item[@id='x/y'][1]");
}

TEST(XPathText, OfAnythingElseHasNone) {
    for (const char* text : {"a | b", "count(a)", "(a)[1]", "$v/a", "", "a = b"})
        EXPECT_TRUE(locationPath(text).steps.empty()) << text;
}

TEST(SheetFields, AreColumnsOrExpressions) {
    const auto fields = sheetFields("Name, [Home odds] AS Odds, count(a, b) AS n, \"two, words\"");
    ASSERT_EQ(fields.size(), 4U);
    EXPECT_EQ(fields[0].column, "Name");
    EXPECT_EQ(fields[1].column, "Home odds");
    EXPECT_EQ(fields[1].name, "Odds");
    EXPECT_EQ(fields[2].column, "");
    EXPECT_EQ(fields[2].name, "n");
    EXPECT_EQ(fields[3].column, "two, words");
    EXPECT_TRUE(sheetFields(" * ").empty());
    EXPECT_EQ(bracketed("Kick-off"), "[Kick-off]");
    EXPECT_EQ(bracketed("Order"), "[Order]");
    EXPECT_EQ(bracketed("Orders"), "Orders");
}

}  // namespace

}  // namespace probe
