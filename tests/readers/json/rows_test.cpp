// Which records the first row and the number of rows deliver, and the count that is reported.

#include <gtest/gtest.h>

#include <limits>

#include "formats/json/json_path.h"
#include "formats/json/json_select.h"
#include "readers/json/JsonRecords.h"
#include "tests/formats/json/parse.h"
#include "tests/readers/json/read.h"

namespace intake {
namespace {

constexpr auto FOUR = R"({"n":["a","b","c","d"]})";
constexpr int32_t LEAST = std::numeric_limits<int32_t>::min();
constexpr int32_t MOST = std::numeric_limits<int32_t>::max();

std::string fieldArray(int32_t fromRow, int32_t numRows) {
    return script(FOUR,
                  {.path = "n", .mode = DATA_FIELD_ARRAY, .fromRow = fromRow, .numRows = numRows});
}

TEST(JsonRows, ThoseFromTheFirstRowOnAreDelivered) {
    EXPECT_EQ(fieldArray(0, 2), R"(T[0-1]=""a"",""b""; READER_NUM_RECORDS=2;)");
    EXPECT_EQ(fieldArray(1, 2), R"(T[0-1]=""b"",""c""; READER_NUM_RECORDS=2;)");
    EXPECT_EQ(fieldArray(3, 1), R"(T[0-0]=""d""; READER_NUM_RECORDS=1;)");
}

TEST(JsonRows, NoMoreThanThereAreAreDelivered) {
    EXPECT_EQ(fieldArray(0, 4), R"(T[0-3]=""a"",""b"",""c"",""d""; READER_NUM_RECORDS=4;)");
    EXPECT_EQ(fieldArray(2, 5), R"(T[0-1]=""c"",""d""; READER_NUM_RECORDS=2;)");
    EXPECT_EQ(fieldArray(3, MOST), R"(T[0-0]=""d""; READER_NUM_RECORDS=1;)");
}

TEST(JsonRows, NoRowsAreNone) {
    EXPECT_EQ(fieldArray(0, 0), "T[0--1]=; READER_NUM_RECORDS=0;");
    EXPECT_EQ(fieldArray(2, 0), "T[0--1]=; READER_NUM_RECORDS=0;");
}

TEST(JsonRows, AFirstRowAtTheEndDeliversNone) {
    EXPECT_EQ(fieldArray(4, 5), "T[0--1]=; READER_NUM_RECORDS=0;");
}

TEST(JsonRows, AFirstRowPastTheEndMakesTheCountNegative) {
    EXPECT_EQ(fieldArray(6, 5), "T[0--3]=; READER_NUM_RECORDS=-2;");
    EXPECT_EQ(fieldArray(MOST, 1), "T[0--2147483644]=; READER_NUM_RECORDS=-2147483643;");
    EXPECT_EQ(fieldArray(MOST, MOST), "T[0--2147483644]=; READER_NUM_RECORDS=-2147483643;");
}

TEST(JsonRows, PastTheEndOnlyTheCountIsWrittenInEveryMode) {
    const auto in = [](TargetMode mode) {
        return script(FOUR, {.path = "n", .mode = mode, .fromRow = 6, .numRows = 5});
    };
    EXPECT_EQ(in(DATA_TABLE), "");
    EXPECT_EQ(in(DATA_ARRAY), "; READER_NUM_RECORDS=-2;");
    EXPECT_EQ(in(DATA_STRUCTURE), ";READER_NUM_RECORDS=-2;");
    EXPECT_EQ(in(SHARED_MEMORY), "");
}

TEST(JsonRows, ANegativeNumberOfRowsDeliversNoneAndIsTheCount) {
    EXPECT_EQ(fieldArray(0, -1), "T[0--2]=; READER_NUM_RECORDS=-1;");
    EXPECT_EQ(fieldArray(3, -2), "T[0--3]=; READER_NUM_RECORDS=-2;");
    EXPECT_EQ(fieldArray(0, LEAST), "T[0--2147483649]=; READER_NUM_RECORDS=-2147483648;");
}

TEST(JsonRows, ANegativeFirstRowBeginsAtTheFirstRecordAndCountsFromWhereItIs) {
    EXPECT_EQ(fieldArray(-2, 4), R"(T[0-3]=""a"",""b""; READER_NUM_RECORDS=4;)");
    EXPECT_EQ(fieldArray(-2, 100), R"(T[0-5]=""a"",""b"",""c"",""d""; READER_NUM_RECORDS=6;)");
    EXPECT_EQ(fieldArray(-5, 3), "T[0-2]=; READER_NUM_RECORDS=3;");
    EXPECT_EQ(fieldArray(LEAST, MOST), "T[0-2147483646]=; READER_NUM_RECORDS=2147483647;");
    EXPECT_EQ(fieldArray(LEAST, LEAST), "T[0--2147483649]=; READER_NUM_RECORDS=-2147483648;");
}

TEST(JsonRows, ADataArrayIsNumberedFromItsFirstDeliveredRecord) {
    constexpr auto SOURCE = R"({"a":1,"b":2,"c":3,"d":4})";
    EXPECT_EQ(script(SOURCE, {.path = "*", .mode = DATA_ARRAY, .fromRow = 2, .numRows = 5}),
              "T[0]={c=3;};T[1]={d=4;};; READER_NUM_RECORDS=2;");
    EXPECT_EQ(script(SOURCE, {.path = "*", .mode = DATA_ARRAY, .fromRow = -1, .numRows = 3}),
              "T[0]={a=1;};T[1]={b=2;};; READER_NUM_RECORDS=3;");
}

TEST(JsonRows, StructuresAndSharedMemoryTakeTheSameRows) {
    EXPECT_EQ(script(R"({"a":{},"b":{},"c":{}})",
                     {.path = "*", .mode = DATA_STRUCTURE, .fromRow = 1, .numRows = 1}),
              "b={};;READER_NUM_RECORDS=1;");
    EXPECT_EQ(script(FOUR, {.path = "n", .mode = SHARED_MEMORY, .fromRow = 1, .numRows = 2}),
              "b|c");
}

TEST(JsonRows, WithoutAPathRowsDoNotCount) {
    EXPECT_EQ(script(R"({"a":[1,2]})", {.fromRow = 1, .numRows = 0}), "T={a[0-1]=1,2,;};");
}

TEST(JsonRows, OfWhichNobodyKnowsWhereTheyEndAreDelivered) {
    for (const char* const last : {"null", "true", "{}", "999"}) {
        for (const char* const first : {"0", "null", "{}"}) {
            std::string source = std::string("[") + first;
            for (int i = 1; i < 999; ++i) {
                source += "," + std::to_string(i);
            }
            source += std::string(",") + last + "]";
            const std::string written = script(source, {.path = "*", .mode = DATA_FIELD_ARRAY});
            EXPECT_TRUE(written.ends_with(" READER_NUM_RECORDS=1000;")) << written;
        }
    }
}

TEST(JsonRows, RoomForMoreOfThemThanThereAreDoesNotStay) {
    std::string source = R"({"few": [0)";
    for (int i = 1; i < 2000; ++i) {
        source += "," + std::to_string(i);
    }
    source += R"(], "beside": ")" + std::string(5'000'000, 'x') + "\"}";
    const Outcome outcome = read(source, requestOf({.path = "few", .mode = DATA_FIELD_ARRAY}));
    EXPECT_GT(outcome.script.size(), 10'000U);
    EXPECT_LT(outcome.script.capacity(), 100'000U);
}

TEST(JsonRows, OfALongTargetAreRefusedBeforeTheyTakeAllMemory) {
    std::string source = R"({"list": [0)";
    for (int i = 1; i < 2000; ++i) {
        source += ",1";
    }
    const JsonDocument document = parse(source + "]}");
    for (const TargetMode mode : {DATA_ARRAY, SHARED_MEMORY}) {
        const RequestRecord request = requestOf({.path = "list",
                                                 .mode = mode,
                                                 .table = std::string(1000, 'T'),
                                                 .delimiter = std::string(1000, '|')});
        std::string script;
        JsonRecords records(document, request, script, RowsLimit("JSON: The rows", 1));
        EXPECT_THROW(records.write(selectNodes(document, parsePath(request.xpath))), RowsTooLarge);
        EXPECT_LT(script.size(), 1'100'000U);
    }
}

}  // namespace
}  // namespace intake
