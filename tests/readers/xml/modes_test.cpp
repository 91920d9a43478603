// The script of every target mode.

#include <gtest/gtest.h>

#include "tests/readers/xml/read.h"

namespace intake {
namespace {

constexpr auto SHOP = R"(<?xml version="1.0"?>
<shop>
  <book id="b1">
    <title>Tides</title>
    <price>7.50</price>
  </book>
  <book id="b2">
    <title>Knots</title>
    <price/>
  </book>
</shop>
)";

TEST(XmlDataTable, HasARecordForEachRowNamedByItsKeyAndNoCount) {
    const std::string script =
        fileScript(SHOP, {.xpath = "/shop/book", .mode = DATA_TABLE, .key = "title"});
    EXPECT_EQ(script, R"(T[Tides]={{title="Tides";price="7.50";};};)"
                      R"(T[Knots]={{title="Knots";price="";};};)");
    EXPECT_EQ(stored(script),
              "T = [Tides: [0: {title: \"Tides\", price: \"7.50\"}], "
              "Knots: [0: {title: \"Knots\", price: \"\"}]]\n");
}

TEST(XmlDataTable, IgnoresThePrefixForItHasNoCount) {
    EXPECT_EQ(
        fileScript(SHOP,
                   {.xpath = "//book[1]", .mode = DATA_TABLE, .key = "@id", .prefix = "SHOP_"}),
        R"(T[b1]={{title="Tides";price="7.50";};};)");
}

TEST(XmlDataArray, NumbersItsRecordsFromZeroAndCountsThem) {
    const std::string script =
        fileScript(SHOP, {.xpath = "/shop/book", .mode = DATA_ARRAY, .prefix = "SHOP_"});
    EXPECT_EQ(script, R"(T[0]={{title="Tides";price="7.50";};};)"
                      R"(T[1]={{title="Knots";price="";};};SHOP_READER_NUM_RECORDS=2;)");
    EXPECT_EQ(stored(script),
              "T = [0: [0: {title: \"Tides\", price: \"7.50\"}], "
              "1: [0: {title: \"Knots\", price: \"\"}]]\nSHOP_READER_NUM_RECORDS = 2\n");
}

TEST(XmlDataArray, DoesNotUseTheKey) {
    EXPECT_EQ(fileScript(SHOP, {.xpath = "//book[2]", .mode = DATA_ARRAY, .key = "no XPath ["}),
              R"(T[0]={{title="Knots";price="";};};READER_NUM_RECORDS=1;)");
}

TEST(XmlDataStructure, IsNamedByTheTableAndHasNoCount) {
    const std::string script = fileScript(
        SHOP, {.xpath = "/shop/book", .mode = DATA_STRUCTURE, .key = "title", .prefix = "SHOP_"});
    EXPECT_EQ(script, R"(T={title="Tides";price="7.50";};T={title="Knots";price="";};)");
    EXPECT_EQ(stored(script), "T = {title: \"Knots\", price: \"\"}\n");
}

TEST(XmlDataStructure, WithoutATableIsNamedByEachRowsKeyText) {
    const std::string script = fileScript(
        SHOP, {.xpath = "/shop/book", .mode = DATA_STRUCTURE, .key = "@id", .table = ""});
    EXPECT_EQ(script, R"(b1={title="Tides";price="7.50";};b2={title="Knots";price="";};)");
    EXPECT_EQ(stored(script),
              "b1 = {title: \"Tides\", price: \"7.50\"}\nb2 = {title: \"Knots\", price: \"\"}\n");
}

TEST(XmlDataStructure, WithATableDoesNotUseTheKey) {
    EXPECT_EQ(fileScript(SHOP, {.xpath = "//book[2]", .mode = DATA_STRUCTURE, .key = "no XPath ["}),
              R"(T={title="Knots";price="";};)");
}

TEST(XmlDataFieldArray, OfThreeRowsIsAnnouncedAsZeroToTwo) {
    const std::string script =
        fileScript("<a><b>x</b><b></b><b>z</b></a>", {.xpath = "/a/b", .mode = DATA_FIELD_ARRAY});
    EXPECT_EQ(script, R"(T[0-2]=""x"","""",""z""; READER_NUM_RECORDS=3;)");
    EXPECT_EQ(stored(script), "T = [0: \"x\", 1: \"\", 2: \"z\"]\nREADER_NUM_RECORDS = 3\n");
}

TEST(XmlDataFieldArray, OfOneRowHasThePrefixBeforeItsCount) {
    EXPECT_EQ(
        fileScript(SHOP, {.xpath = "//title[1]", .mode = DATA_FIELD_ARRAY, .prefix = "SHOP_"}),
        R"(T[0-1]=""Tides"",""Knots""; SHOP_READER_NUM_RECORDS=2;)");
    EXPECT_EQ(
        fileScript(SHOP, {.xpath = "(//title)[1]", .mode = DATA_FIELD_ARRAY, .prefix = "SHOP_"}),
        R"(T[0-0]=""Tides""; SHOP_READER_NUM_RECORDS=1;)");
}

TEST(XmlSharedMemory, JoinsTheRowsByTheFieldsDelimiterOnly) {
    EXPECT_EQ(fileScript(SHOP, {.xpath = "//title", .mode = SHARED_MEMORY, .prefix = "SHOP_"}),
              "Tides|Knots");
    EXPECT_EQ(fileScript(SHOP, {.xpath = "//title", .mode = SHARED_MEMORY, .delimiter = " - "}),
              "Tides - Knots");
    EXPECT_EQ(fileScript(SHOP, {.xpath = "//title", .mode = SHARED_MEMORY, .delimiter = ""}),
              "TidesKnots");
    EXPECT_EQ(fileScript(SHOP, {.xpath = "//price", .mode = SHARED_MEMORY}), "7.50|");
}

TEST(XmlModes, WriteTheTableNameAsItStands) {
    EXPECT_EQ(
        fileScript("<a>1</a>", {.xpath = "/a", .mode = DATA_FIELD_ARRAY, .table = "My table"}),
        R"(My table[0-0]=""1""; READER_NUM_RECORDS=1;)");
}

TEST(XmlModes, WriteNothingNotEvenACountWhenNothingIsSelected) {
    for (const TargetMode mode :
         {DATA_TABLE, DATA_ARRAY, DATA_STRUCTURE, DATA_FIELD_ARRAY, SHARED_MEMORY}) {
        EXPECT_EQ(fileScript(SHOP, {.xpath = "/shop/none", .mode = mode, .key = "title"}), "");
    }
}

TEST(XmlModes, ThatDoNotExistWriteNothing) {
    EXPECT_EQ(fileScript(SHOP, {.xpath = "//book", .mode = static_cast<TargetMode>(5)}), "");
    EXPECT_EQ(fileScript(SHOP, {.xpath = "//book", .mode = static_cast<TargetMode>(-1)}), "");
}

}  // namespace
}  // namespace intake
