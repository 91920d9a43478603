// From the encoding of the source to the encoding of the script.

#include <gtest/gtest.h>

#include "tests/readers/xml/read.h"

namespace intake {
namespace {

constexpr int32_t UTF8 = 0;
constexpr int32_t LATIN1 = 2;

/// <café>Škoda ß</café>, which ISO-8859-1 can write but for its first letter.
constexpr auto CAFE = "<r><caf\xC3\xA9>\xC5\xA0koda \xC3\x9F</caf\xC3\xA9></r>";

std::string structure(const std::string& source, int32_t encoding, bool markup = false) {
    return fileScript(
        source, {.xpath = "/r", .mode = DATA_STRUCTURE, .encoding = encoding, .markup = markup});
}

TEST(XmlEncodingOfTheScript, IsUtf8ForZero) {
    EXPECT_EQ(structure(CAFE, UTF8), "T={caf\xC3\xA9=\"\xC5\xA0koda \xC3\x9F\";};");
}

TEST(XmlEncodingOfTheScript, IsIso88591ForTwoInNamesAndValues) {
    EXPECT_EQ(structure(CAFE, LATIN1), "T={caf\xE9=\"?koda \xDF\";};");
    EXPECT_EQ(structure(CAFE, LATIN1, true), "T={caf\xE9=\"<caf\xE9>?koda \xDF</caf\xE9>\";};");
}

TEST(XmlEncodingOfTheScript, IsUtf8ForAnyOtherNumber) {
    EXPECT_EQ(structure(CAFE, 1), "T={caf\xC3\xA9=\"\xC5\xA0koda \xC3\x9F\";};");
    EXPECT_EQ(structure(CAFE, 7), "T={caf\xC3\xA9=\"\xC5\xA0koda \xC3\x9F\";};");
}

TEST(XmlEncodingOfTheScript, HoldsForKeysToo) {
    EXPECT_EQ(fileScript("<r><k>\xC3\xA9</k></r>",
                         {.xpath = "/r", .mode = DATA_TABLE, .key = "k", .encoding = LATIN1}),
              "T[\xE9]={{k=\"\xE9\";};};");
}

TEST(XmlEncodingOfTheScript, IsNotThatOfTheSource) {
    constexpr auto SOURCE = "<?xml version='1.0' encoding='ISO-8859-1'?><r><a>\xE9</a></r>";
    EXPECT_EQ(structure(SOURCE, UTF8), "T={a=\"\xC3\xA9\";};");
    EXPECT_EQ(structure(SOURCE, LATIN1), "T={a=\"\xE9\";};");
}

TEST(XmlEncodingOfTheScript, IsThatOfTheExpressionsAndNamespacesToo) {
    constexpr auto SOURCE =
        "<r xmlns:f='urn:\xC3\xA9'><f:\xC3\xA9t\xC3\xA9><f:cl\xC3\xA9>x</f:cl\xC3\xA9>"
        "</f:\xC3\xA9t\xC3\xA9></r>";
    EXPECT_EQ(fileScript(SOURCE, {.xpath = "/r/p:\xE9t\xE9",
                                  .mode = DATA_TABLE,
                                  .key = "p:cl\xE9",
                                  .namespaces = "xmlns:p='urn:\xE9'",
                                  .encoding = LATIN1}),
              "T[x]={{f:cl\xE9=\"x\";};};");
    EXPECT_EQ(fileScript(SOURCE, {.xpath = "/r/p:\xE9t\xE9",
                                  .mode = DATA_STRUCTURE,
                                  .key = "p:cl\xE9",
                                  .table = "",
                                  .namespaces = "xmlns:p='urn:\xE9'",
                                  .encoding = LATIN1}),
              "x={f:cl\xE9=\"x\";};");
    EXPECT_EQ(fileScript(SOURCE, {.xpath = "/r/p:\xC3\xA9t\xC3\xA9",
                                  .mode = DATA_TABLE,
                                  .key = "p:cl\xC3\xA9",
                                  .namespaces = "xmlns:p='urn:\xC3\xA9'",
                                  .encoding = UTF8}),
              "T[x]={{f:cl\xC3\xA9=\"x\";};};");
}

TEST(XmlEncodingOfTheSource, IsUtf8WithoutADeclaration) {
    EXPECT_EQ(structure("\xEF\xBB\xBF<r><a>\xC3\xA9</a></r>", UTF8), "T={a=\"\xC3\xA9\";};");
}

TEST(XmlEncodingOfTheSource, MayBeUtf16WithAByteOrderMark) {
    const std::string text = "<r><a>x</a></r>";
    std::string source = "\xFF\xFE";
    for (const char character : text) {
        source += character;
        source += '\0';
    }
    EXPECT_EQ(structure(source, UTF8), "T={a=\"x\";};");
}

TEST(XmlEncodingOfAPayload, IsAppliedOnlyOnceItIsConverted) {
    EXPECT_EQ(
        urlScript(
            "<payload><field name='caf\xC3\xA9'><value>\xC3\x9F</value></field>"
            "</payload>",
            {.xpath = "/payload", .mode = DATA_STRUCTURE, .encoding = LATIN1, .payload = true}),
        "T={caf\xE9=\xDF;};");
}

}  // namespace
}  // namespace intake
