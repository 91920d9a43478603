// How the nodes of a row become its fields, as text and as markup.

#include <gtest/gtest.h>

#include "tests/readers/xml/read.h"

namespace intake {
namespace {

std::string fields(const std::string& row, bool markup = false) {
    return fileScript(row, {.xpath = "/*", .mode = DATA_STRUCTURE, .markup = markup});
}

TEST(XmlFields, AreTheChildrenInDocumentOrder) {
    EXPECT_EQ(fields("<r><b>2</b><a>1</a><b>3</b></r>"), R"(T={b="2";a="1";b="3";};)");
}

TEST(XmlFields, OfARowWithoutChildrenAreNone) {
    EXPECT_EQ(fields("<r/>"), "T={};");
    EXPECT_EQ(fields("<r a='1'></r>"), "T={};");
    EXPECT_EQ(fields("<r>\n  \n</r>"), "T={};");
}

TEST(XmlFields, HoldTheTextOfAllThatIsBelowThem) {
    EXPECT_EQ(fields("<r><name><first>Ada</first>-<last>Reed</last></name></r>"),
              R"(T={name="Ada-Reed";};)");
}

TEST(XmlFields, KeepThePrefixOfTheirNames) {
    EXPECT_EQ(fields("<r xmlns:s='urn:s' xmlns='urn:d'><s:a>1</s:a><a>2</a></r>"),
              R"(T={s:a="1";a="2";};)");
}

TEST(XmlFields, AreMadeOfNodesOfEveryType) {
    const std::string script = fields("<r>text<![CDATA[a < b]]><!--note--><?app go?><e>1</e></r>");
    EXPECT_EQ(script,
              R"(T={#text="text";#cdata-section="a < b";#comment="note";app="go";e="1";};)");
    EXPECT_EQ(stored(script),
              "T = {#text: \"text\", #cdata-section: \"a < b\", #comment: \"note\", app: \"go\", "
              "e: \"1\"}\n");
}

TEST(XmlFields, HoldTheirWholeMarkupWhenItIsAskedFor) {
    const std::string script =
        fields(R"(<r><a id="1">x &amp; <i>y</i></a><b/>t &lt; u<!--note--></r>)", true);
    EXPECT_EQ(script, R"(T={a="<a id="1">x &amp; <i>y</i></a>";b="<b/>";)"
                      R"(#text="t &lt; u";#comment="<!--note-->";};)");
    EXPECT_EQ(stored(script),
              R"(T = {a: "<a id="1">x &amp; <i>y</i></a>", b: "<b/>", #text: "t &lt; u", )"
              "#comment: \"<!--note-->\"}\n");
}

TEST(XmlFields, AreTextUnlessTheFormatIsMarkup) {
    EXPECT_EQ(fields("<r><a id='1'>x &amp; <i>y</i></a></r>"), R"(T={a="x & y";};)");
}

TEST(XmlFields, KeepQuotesSemicolonsAndBracesOfTheirTexts) {
    const std::string script = fields(R"(<r><a>say "hi" {now; then}</a></r>)");
    EXPECT_EQ(script, R"(T={a="say "hi" {now; then}";};)");
    EXPECT_EQ(stored(script), "T = {a: \"say \"hi\" {now; then}\"}\n");
}

TEST(XmlFields, KeepTheLineEndsWithinTheirTexts) {
    EXPECT_EQ(fields("<r><a>\n one\n two\n</a></r>"), "T={a=\"one\n two\";};");
}

TEST(XmlFields, OfTheWholeDocumentAreItsTopLevelNodes) {
    EXPECT_EQ(fileScript("<r><a>1</a><b>2</b></r>", {.xpath = "/", .mode = DATA_STRUCTURE}),
              R"(T={r="12";};)");
}

TEST(XmlValues, OfAFieldArrayAreTheRowsOwnTextOrMarkup) {
    constexpr auto SOURCE = R"(<a><b n="1">x<c>y</c></b><b/></a>)";
    EXPECT_EQ(fileScript(SOURCE, {.xpath = "/a/b", .mode = DATA_FIELD_ARRAY}),
              R"(T[0-1]=""xy"",""""; READER_NUM_RECORDS=2;)");
    const std::string script =
        fileScript(SOURCE, {.xpath = "/a/b", .mode = DATA_FIELD_ARRAY, .markup = true});
    EXPECT_EQ(script, R"(T[0-1]=""<b n="1">x<c>y</c></b>"",""<b/>""; READER_NUM_RECORDS=2;)");
    EXPECT_EQ(stored(script),
              "T = [0: \"<b n=\"1\">x<c>y</c></b>\", 1: \"<b/>\"]\nREADER_NUM_RECORDS = 2\n");
}

TEST(XmlValues, OfASharedMemoryAreTheRowsOwnTextOrMarkup) {
    constexpr auto SOURCE = "<a><b>x &amp; y</b><b>z</b></a>";
    EXPECT_EQ(fileScript(SOURCE, {.xpath = "/a/b", .mode = SHARED_MEMORY}), "x & y|z");
    EXPECT_EQ(fileScript(SOURCE, {.xpath = "/a/b", .mode = SHARED_MEMORY, .markup = true}),
              "<b>x &amp; y</b>|<b>z</b>");
}

TEST(XmlValues, MayBeAttributes) {
    constexpr auto SOURCE = R"(<a><b n="1"/><b n="2"/></a>)";
    EXPECT_EQ(fileScript(SOURCE, {.xpath = "/a/b/@n", .mode = DATA_FIELD_ARRAY}),
              R"(T[0-1]=""1"",""2""; READER_NUM_RECORDS=2;)");
    const std::string script =
        fileScript(SOURCE, {.xpath = "/a/b/@n", .mode = DATA_FIELD_ARRAY, .markup = true});
    EXPECT_EQ(script, R"(T[0-1]=""n="1""",""n="2"""; READER_NUM_RECORDS=2;)");
    EXPECT_EQ(stored(script), "T = [0: \"n=\"1\"\", 1: \"n=\"2\"\"]\nREADER_NUM_RECORDS = 2\n");
}

TEST(XmlMarkup, DeclaresTheNamespacesThatItTakesAlong) {
    EXPECT_EQ(fileScript("<r xmlns:s='urn:s'><s:a>1</s:a></r>",
                         {.xpath = "/r", .mode = DATA_STRUCTURE, .markup = true}),
              R"(T={s:a="<s:a xmlns:s="urn:s">1</s:a>";};)");
}

}  // namespace
}  // namespace intake
