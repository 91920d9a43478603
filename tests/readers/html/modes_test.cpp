// The script of every target mode, of pages parsed by the system.

#include <gtest/gtest.h>

#include "tests/readers/html/read.h"

namespace intake {
namespace {

constexpr auto PRICES = R"(<!DOCTYPE html>
<html><body>
<table>
  <tr><th>Symbol</th><th>Price</th></tr>
  <tr><td>KLDBY</td><td>310.25</td></tr>
  <tr><td>GRW</td><td>18.40</td></tr>
</table>
</body></html>
)";

TEST(HtmlDataTable, HasARecordForEachRowNamedByItsKeyCellAndNoCount) {
    const std::string script =
        fileScript(PRICES, {.mode = DATA_TABLE, .key = "Symbol", .prefix = "P_", .fromRow = 1});
    EXPECT_EQ(script, R"(T[KLDBY]={{Symbol=""KLDBY"";Price=""310.25"";};};)"
                      R"(T[GRW]={{Symbol=""GRW"";Price=""18.40"";};};)");
    EXPECT_EQ(stored(script),
              "T = [KLDBY: [0: {Symbol: \"KLDBY\", Price: \"310.25\"}], "
              "GRW: [0: {Symbol: \"GRW\", Price: \"18.40\"}]]\n");
}

TEST(HtmlDataTable, BeginsWithTheNameRowWhenNoRowIsSkipped) {
    EXPECT_EQ(fileScript(PRICES, {.mode = DATA_TABLE, .key = "Price"}),
              R"(T[Price]={{Symbol=""Symbol"";Price=""Price"";};};)"
              R"(T[310.25]={{Symbol=""KLDBY"";Price=""310.25"";};};)"
              R"(T[18.40]={{Symbol=""GRW"";Price=""18.40"";};};)");
}

TEST(HtmlDataArray, NumbersItsRecordsFromZeroAndCountsThemWithoutSeparatorAndPrefix) {
    const std::string script =
        fileScript(PRICES, {.mode = DATA_ARRAY, .prefix = "P_", .fromRow = 1});
    EXPECT_EQ(script, R"(T[0]={{Symbol=""KLDBY"";Price=""310.25"";};};)"
                      R"(T[1]={{Symbol=""GRW"";Price=""18.40"";};};READER_NUM_RECORDS=2;)");
    EXPECT_EQ(stored(script),
              "T = [0: [0: {Symbol: \"KLDBY\", Price: \"310.25\"}], "
              "1: [0: {Symbol: \"GRW\", Price: \"18.40\"}]]\nREADER_NUM_RECORDS = 2\n");
}

TEST(HtmlDataArray, DoesNotNeedTheKey) {
    EXPECT_EQ(fileScript(PRICES, {.mode = DATA_ARRAY, .key = "Volume", .fromRow = 2}),
              R"(T[0]={{Symbol=""GRW"";Price=""18.40"";};};READER_NUM_RECORDS=1;)");
}

TEST(HtmlDataStructure, IsNamedByEachRowsKeyCellAndEndsItsRecordsByALineEndOfItsOwn) {
    const std::string script =
        fileScript(PRICES, {.mode = DATA_STRUCTURE, .key = "Symbol", .fromRow = 1});
    EXPECT_EQ(script,
              "KLDBY={Symbol=\"\"KLDBY\"\";Price=\"\"310.25\"\";};\r\r\n"
              "GRW={Symbol=\"\"GRW\"\";Price=\"\"18.40\"\";};\r\r\n");
    EXPECT_EQ(stored(script),
              "KLDBY = {Symbol: \"KLDBY\", Price: \"310.25\"}\n"
              "GRW = {Symbol: \"GRW\", Price: \"18.40\"}\n");
}

TEST(HtmlDataFieldArray, HasTheKeyColumnAndItsCountWithoutPrefix) {
    const std::string script = fileScript(
        PRICES, {.mode = DATA_FIELD_ARRAY, .key = "Price", .prefix = "P_", .fromRow = 1});
    EXPECT_EQ(script, R"(T[0-1]=""310.25"",""18.40""; READER_NUM_RECORDS=2;)");
    EXPECT_EQ(stored(script), "T = [0: \"310.25\", 1: \"18.40\"]\nREADER_NUM_RECORDS = 2\n");
}

TEST(HtmlDataFieldArray, OfThreeRowsIsAnnouncedAsZeroToTwo) {
    EXPECT_EQ(fileScript("<table><tr><td>c<tr><td>x<tr><td>y<tr><td>z</table>",
                         {.mode = DATA_FIELD_ARRAY, .key = "c", .fromRow = 1}),
              R"(T[0-2]=""x"",""y"",""z""; READER_NUM_RECORDS=3;)");
}

TEST(HtmlSharedMemory, JoinsTheKeyCellsByTheFieldsDelimiter) {
    EXPECT_EQ(fileScript(PRICES, {.mode = SHARED_MEMORY, .key = "Symbol"}), "Symbol|KLDBY|GRW");
    EXPECT_EQ(fileScript(PRICES,
                         {.mode = SHARED_MEMORY, .key = "Price", .delimiter = " - ", .fromRow = 1}),
              "310.25 - 18.40");
    EXPECT_EQ(fileScript(PRICES, {.mode = SHARED_MEMORY, .key = "Price", .fromRow = 2}), "18.40");
}

TEST(HtmlModes, NarrowNamesAndValuesButLeaveKeysAsTheSystemConvertsThem) {
    constexpr auto FRENCH =
        "<meta charset=utf-8><table><tr><th>\xC3\x89quipe<th>\xE2\x82\xAC"
        "<tr><td>\xC3\x89toile<td>\xE2\x82\xAC 1<tr><td>Li\xC3\xA8ge<td>2</table>";
    const auto script = [FRENCH](TargetMode mode) {
        return fileScriptAlone(FRENCH,
                               {.mode = mode, .key = "\xC9quipe", .fromRow = 1, .encoding = 2});
    };
    EXPECT_EQ(script(DATA_STRUCTURE),
              "\xC3\x89toile={\xC9quipe=\"\"\xC9toile\"\";?=\"\"? 1\"\";};\r\r\n"
              "Li\xC3\xA8ge={\xC9quipe=\"\"Li\xE8ge\"\";?=\"\"2\"\";};\r\r\n");
    EXPECT_EQ(script(DATA_FIELD_ARRAY),
              "T[0-1]=\"\"\xC3\x89toile\"\",\"\"Li\xC3\xA8ge\"\"; READER_NUM_RECORDS=2;");
    EXPECT_EQ(script(SHARED_MEMORY), "\xC3\x89toile|Li\xC3\xA8ge");
}

TEST(HtmlModes, ThatNeedAKeyFailWithoutOne) {
    for (const TargetMode mode : {DATA_TABLE, DATA_STRUCTURE, DATA_FIELD_ARRAY, SHARED_MEMORY}) {
        EXPECT_EQ(fileScript(PRICES, {.mode = mode, .key = "Volume"}),
                  "failed: HTML: Could not find KEY \"Volume\" in the first row of the table");
        EXPECT_EQ(fileScript(PRICES, {.mode = mode, .key = "symbol"}),
                  "failed: HTML: Could not find KEY \"symbol\" in the first row of the table");
        EXPECT_EQ(fileScript(PRICES, {.mode = mode, .key = ""}),
                  "failed: HTML: Could not find KEY \"\" in the first row of the table");
    }
}

TEST(HtmlModes, ThatDoNotExistWriteNothing) {
    EXPECT_EQ(fileScript(PRICES, {.mode = static_cast<TargetMode>(5)}), "");
    EXPECT_EQ(fileScript(PRICES, {.mode = static_cast<TargetMode>(-1)}), "");
}

TEST(HtmlModes, GiveNothingForATableWithoutRowsWhateverTheKey) {
    for (const TargetMode mode :
         {DATA_TABLE, DATA_ARRAY, DATA_STRUCTURE, DATA_FIELD_ARRAY, SHARED_MEMORY}) {
        EXPECT_EQ(fileScript("<table></table>", {.mode = mode, .key = "Symbol"}), "");
        EXPECT_EQ(fileScript("<table><caption>x</caption><tbody></tbody></table>",
                             {.mode = mode, .key = "Symbol"}),
                  "");
    }
}

}  // namespace
}  // namespace intake
