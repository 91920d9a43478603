#include <gtest/gtest.h>

#include "tests/readers/json/read.h"

namespace intake {
namespace {

TEST(JsonDataFieldArray, TheRecordsAreOneArrayOfTexts) {
    constexpr auto SOURCE = R"({"rows":[{"n":"x"},{"n":"y"},{"n":"z"}]})";
    EXPECT_EQ(script(SOURCE, {.path = "rows/n", .mode = DATA_FIELD_ARRAY}),
              R"(T[0-2]=""x"",""y"",""z""; READER_NUM_RECORDS=3;)");
    EXPECT_EQ(stored(SOURCE, {.path = "rows/n", .mode = DATA_FIELD_ARRAY}),
              "T = [0: \"x\", 1: \"y\", 2: \"z\"]\nREADER_NUM_RECORDS = 3\n");
}

TEST(JsonDataFieldArray, OneRecordHasNoComma) {
    EXPECT_EQ(script(R"({"n":"x"})", {.path = "n", .mode = DATA_FIELD_ARRAY}),
              R"(T[0-0]=""x""; READER_NUM_RECORDS=1;)");
}

TEST(JsonDataFieldArray, EveryTypeIsReadAsAString) {
    EXPECT_EQ(script(R"({"v":["x",7.50,1234567,true,false,null,[1],{"a":1},""]})",
                     {.path = "v", .mode = DATA_FIELD_ARRAY}),
              R"(T[0-8]=""x"",""7.50"",""1234567"",""true"",""false"",""null"","""","""",""""; )"
              "READER_NUM_RECORDS=9;");
}

TEST(JsonDataFieldArray, TheKeyIsNotUsed) {
    EXPECT_EQ(script(R"({"rows":["x"]})", {.path = "rows", .mode = DATA_FIELD_ARRAY, .key = "id"}),
              R"(T[0-0]=""x""; READER_NUM_RECORDS=1;)");
}

TEST(JsonDataFieldArray, ThePrefixStandsBeforeTheCount) {
    EXPECT_EQ(script(R"({"n":"x"})", {.path = "n", .mode = DATA_FIELD_ARRAY, .prefix = "P_"}),
              R"(T[0-0]=""x""; P_READER_NUM_RECORDS=1;)");
}

TEST(JsonDataFieldArray, APathThatFindsNothingWritesAnEmptyRangeAndACountOfZero) {
    EXPECT_EQ(script(R"({"n":"x"})", {.path = "m", .mode = DATA_FIELD_ARRAY}),
              "T[0--1]=; READER_NUM_RECORDS=0;");
    EXPECT_EQ(stored(R"({"n":"x"})", {.path = "m", .mode = DATA_FIELD_ARRAY}),
              "T = []\nREADER_NUM_RECORDS = 0\n");
}

}  // namespace
}  // namespace intake
