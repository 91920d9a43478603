// Which rows and cells are delivered.

#include <gtest/gtest.h>

#include <limits>

#include "tests/readers/html/read.h"

namespace intake {
namespace {

constexpr auto ROWS = "<table><tr><td>c<tr><td>1<tr><td>2<tr><td>3</table>";

std::string column(int32_t fromRow, int32_t numRows) {
    return fileScriptAlone(
        ROWS, {.mode = DATA_FIELD_ARRAY, .key = "c", .fromRow = fromRow, .numRows = numRows});
}

TEST(HtmlRows, BeginAtFromRowAndEndAtTheLast) {
    EXPECT_EQ(column(0, 1000000), R"(T[0-3]=""c"",""1"",""2"",""3""; READER_NUM_RECORDS=4;)");
    EXPECT_EQ(column(1, 2), R"(T[0-1]=""1"",""2""; READER_NUM_RECORDS=2;)");
    EXPECT_EQ(column(3, 5), R"(T[0-0]=""3""; READER_NUM_RECORDS=1;)");
}

TEST(HtmlRows, AreNoneFromTheirNumberOn) {
    EXPECT_EQ(column(4, 1000000), "");
    EXPECT_EQ(column(5, 1000000), "");
    EXPECT_EQ(column(std::numeric_limits<int32_t>::max(), 1000000), "");
    for (const TargetMode mode : {DATA_TABLE, DATA_ARRAY, DATA_STRUCTURE, SHARED_MEMORY}) {
        EXPECT_EQ(fileScript(ROWS, {.mode = mode, .key = "c", .fromRow = 4}), "");
    }
}

TEST(HtmlRows, BeyondTheLastStillNeedTheirKey) {
    for (const TargetMode mode : {DATA_TABLE, DATA_STRUCTURE, DATA_FIELD_ARRAY, SHARED_MEMORY}) {
        for (const int32_t fromRow : {4, 5, 1000}) {
            EXPECT_EQ(fileScript(ROWS, {.mode = mode, .key = "d", .fromRow = fromRow}),
                      "failed: HTML: Could not find KEY \"d\" in the first row of the table");
        }
    }
    EXPECT_EQ(fileScript(ROWS, {.mode = DATA_ARRAY, .key = "d", .fromRow = 4}), "");
}

TEST(HtmlRows, OfNegativeNumbersAddressTheFirstAndCountAsGiven) {
    EXPECT_EQ(column(-2, 4), R"(T[0-3]=""c"",""1""; READER_NUM_RECORDS=4;)");
    EXPECT_EQ(column(-2, 1000000), R"(T[0-5]=""c"",""1"",""2"",""3""; READER_NUM_RECORDS=6;)");
    EXPECT_EQ(column(0, -1), "T[0--2]=; READER_NUM_RECORDS=-1;");
    EXPECT_EQ(column(std::numeric_limits<int32_t>::max(), std::numeric_limits<int32_t>::max()), "");
    EXPECT_EQ(fileScript(ROWS, {.mode = DATA_ARRAY, .fromRow = -1, .numRows = 2}),
              R"(T[0]={{c=""c"";};};READER_NUM_RECORDS=2;)");
}

TEST(HtmlRows, LongerThanTheFirstAreCutAndShorterOnesWriteTheirOwnCells) {
    EXPECT_EQ(fileScript("<table><tr><th>a<th>b"
                         "<tr><td>1<td>2<td>3"
                         "<tr><td>4"
                         "<tr></tr></table>",
                         {.mode = DATA_ARRAY, .fromRow = 1}),
              R"(T[0]={{a=""1"";b=""2"";};};T[1]={{a=""4"";};};T[2]={{};};)"
              "READER_NUM_RECORDS=3;");
}

TEST(HtmlRows, WithoutACellInTheKeyColumnHaveAnEmptyKey) {
    constexpr auto RAGGED = "<table><tr><th>a<th>b<tr><td>1<tr><td>2<td>x</table>";
    EXPECT_EQ(fileScriptAlone(RAGGED, {.mode = DATA_TABLE, .key = "b", .fromRow = 1}),
              R"(T[]={{a=""1"";};};T[x]={{a=""2"";b=""x"";};};)");
    EXPECT_EQ(fileScriptAlone(RAGGED, {.mode = DATA_STRUCTURE, .key = "b", .fromRow = 1}),
              "={a=\"\"1\"\";};\r\r\nx={a=\"\"2\"\";b=\"\"x\"\";};\r\r\n");
    EXPECT_EQ(fileScript(RAGGED, {.mode = DATA_FIELD_ARRAY, .key = "b", .fromRow = 1}),
              R"(T[0-1]="""",""x""; READER_NUM_RECORDS=2;)");
    EXPECT_EQ(fileScript(RAGGED, {.mode = SHARED_MEMORY, .key = "b", .fromRow = 1}), "|x");
}

TEST(HtmlRows, MayHaveTheSameNameTwiceAndTheFirstIsTheKey) {
    EXPECT_EQ(fileScriptAlone("<table><tr><th>a<th>a<tr><td>1<td>2</table>",
                              {.mode = DATA_TABLE, .key = "a", .fromRow = 1}),
              R"(T[1]={{a=""1"";a=""2"";};};)");
}

TEST(HtmlRows, WriteQuotesAndSemicolonsAsTheyAre) {
    EXPECT_EQ(fileScriptAlone("<table><tr><th>a<tr><td>say \"x\"; {y}</table>",
                              {.mode = DATA_ARRAY, .fromRow = 1}),
              R"(T[0]={{a=""say "x"; {y}"";};};READER_NUM_RECORDS=1;)");
}

TEST(HtmlRows, OfLongNamesAreRefusedBeforeTheyTakeAllMemory) {
    std::string page = "<table><tr><td>" + std::string(1'000'000, 'n');
    for (int row = 0; row < 20000; ++row) {
        page += "<tr><td>v";
    }
    EXPECT_GT(fileScriptAlone(page, {.mode = DATA_ARRAY, .fromRow = 1, .numRows = 249}).size(),
              249'000'000U);
    EXPECT_EQ(fileScript(page, {.mode = DATA_ARRAY, .fromRow = 1, .numRows = 250}),
              "failed: HTML: The rows of the table become larger than 250 MB");
    EXPECT_EQ(fileScript(page, {.mode = DATA_ARRAY, .fromRow = 1}),
              "failed: HTML: The rows of the table become larger than 250 MB");
    EXPECT_EQ(fileScriptAlone(page, {.mode = DATA_ARRAY, .fromRow = 20000}),
              "T[0]={{" + std::string(1'000'000, 'n') + "=\"\"v\"\";};};READER_NUM_RECORDS=1;");
}

}  // namespace
}  // namespace intake
