#include <gtest/gtest.h>

#include "tests/readers/json/read.h"

namespace intake {
namespace {

TEST(JsonDataArray, MembersOfAnObjectAreRecordsThatKeepTheirNames) {
    EXPECT_EQ(script(R"({"items":{"a":1,"b":"x"}})", {.path = "items/*", .mode = DATA_ARRAY}),
              R"(T[0]={a=1;};T[1]={b=""x"";};; READER_NUM_RECORDS=2;)");
}

TEST(JsonDataArray, ObjectsAreNumberedFromZero) {
    constexpr auto SOURCE = R"({"rows":[{"a":1,"b":"x"},{"a":2},{}]})";
    EXPECT_EQ(script(SOURCE, {.path = "rows", .mode = DATA_ARRAY}),
              R"(T[0]={{a=1;b=""x"";},};T[1]={{a=2;},};T[2]={{},};; READER_NUM_RECORDS=3;)");
    EXPECT_EQ(stored(SOURCE, {.path = "rows", .mode = DATA_ARRAY}),
              "T = [0: [0: {a: 1, b: \"x\"}], 1: [0: {a: 2}], 2: [0: {}]]\n"
              "READER_NUM_RECORDS = 3\n");
}

TEST(JsonDataArray, ElementsThatAreScalarsHaveNoName) {
    EXPECT_EQ(
        script(R"({"rows":["x",7.50,true,false,null]})", {.path = "rows", .mode = DATA_ARRAY}),
        R"(T[0]={=""x"";};T[1]={=7.5;};T[2]={=1;};T[3]={=0;};T[4]={};; )"
        "READER_NUM_RECORDS=5;");
}

TEST(JsonDataArray, AFlatArrayIsAListOfItsElements) {
    constexpr auto SOURCE = R"({"grid":[[1,"x",null,true],[],[7.50]]})";
    EXPECT_EQ(script(SOURCE, {.path = "grid", .mode = DATA_ARRAY}),
              R"(T[0]=1,""x"",1,;T[1]=;T[2]=7.5,;; READER_NUM_RECORDS=3;)");
    EXPECT_EQ(stored(SOURCE, {.path = "grid", .mode = DATA_ARRAY}),
              "T = [0: [0: 1, 1: \"x\", 2: 1], 1: \"\", 2: [0: 7.5]]\nREADER_NUM_RECORDS = 3\n");
}

TEST(JsonDataArray, AnArrayThatIsNotFlatIsWalked) {
    EXPECT_EQ(script(R"({"grid":[[1,[2]],[{"a":3}]]})", {.path = "grid", .mode = DATA_ARRAY}),
              "T[0]={[0-1]={=1;[0-0]=2,;};};T[1]={[0-0]={{a=3;},};};; READER_NUM_RECORDS=2;");
}

TEST(JsonDataArray, ANamelessRootIsOneRecord) {
    EXPECT_EQ(script(R"({"a":1})", {.path = "/", .mode = DATA_ARRAY}),
              "T[0]={{a=1;},};; READER_NUM_RECORDS=1;");
    EXPECT_EQ(script("[1,2]", {.path = "/", .mode = DATA_ARRAY}),
              "T[0]=1,2,;; READER_NUM_RECORDS=1;");
    EXPECT_EQ(script("7", {.path = "/", .mode = DATA_ARRAY}), "T[0]={=7;};; READER_NUM_RECORDS=1;");
}

TEST(JsonDataArray, TheKeyIsNotUsed) {
    EXPECT_EQ(script(R"({"rows":[{"id":"k"}]})", {.path = "rows", .mode = DATA_ARRAY, .key = "id"}),
              R"(T[0]={{id=""k"";},};; READER_NUM_RECORDS=1;)");
}

TEST(JsonDataArray, ThePrefixStandsBeforeTheCount) {
    EXPECT_EQ(script(R"({"a":1})", {.path = "a", .mode = DATA_ARRAY, .prefix = "TOP_"}),
              "T[0]={a=1;};; TOP_READER_NUM_RECORDS=1;");
}

TEST(JsonDataArray, TheTargetIsWrittenAsItStands) {
    EXPECT_EQ(script(R"({"a":1})", {.path = "a", .mode = DATA_ARRAY, .table = "My table"}),
              "My table[0]={a=1;};; READER_NUM_RECORDS=1;");
}

TEST(JsonDataArray, AFilterSelectsTheElementsWhoseMemberReadsAsItsValue) {
    EXPECT_EQ(script(R"({"list":[{"id":6},{"id":7,"n":"b"},{"id":"7","n":"c"}]})",
                     {.path = "list[@id = 7]", .mode = DATA_ARRAY}),
              R"(T[0]={{id=7;n=""b"";},};T[1]={{id=""7"";n=""c"";},};; READER_NUM_RECORDS=2;)");
}

TEST(JsonDataArray, APathThatFindsNothingWritesACountOfZero) {
    EXPECT_EQ(script(R"({"a":1})", {.path = "b", .mode = DATA_ARRAY}), "; READER_NUM_RECORDS=0;");
    EXPECT_EQ(script(R"({"a":[]})", {.path = "a", .mode = DATA_ARRAY, .prefix = "P_"}),
              "; P_READER_NUM_RECORDS=0;");
    EXPECT_EQ(stored(R"({"a":[]})", {.path = "a", .mode = DATA_ARRAY}), "READER_NUM_RECORDS = 0\n");
}

TEST(JsonDataArray, ThousandsOfRecordsAreAllWritten) {
    std::string source = "[";
    std::string expected;
    for (int record = 0; record < 2500; ++record) {
        const std::string number = std::to_string(record);
        source.append(record == 0 ? "" : ",").append("{\"a\":").append(number).append("}");
        expected.append("T[").append(number).append("]={{a=").append(number).append(";},};");
    }

    EXPECT_EQ(script(source + "]", {.path = "*", .mode = DATA_ARRAY}),
              expected + "; READER_NUM_RECORDS=2500;");
}

}  // namespace
}  // namespace intake
