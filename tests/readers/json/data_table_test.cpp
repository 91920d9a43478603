#include <gtest/gtest.h>

#include "tests/readers/json/read.h"

namespace intake {
namespace {

TEST(JsonDataTable, ARecordIsFiledUnderTheValueOfItsKeyMember) {
    constexpr auto SOURCE = R"({"rows":[{"id":"k1","a":1},{"id":"k2","a":2}]})";
    EXPECT_EQ(script(SOURCE, {.path = "rows", .key = "id"}),
              R"(T[k1]={{id=""k1"";a=1;},};T[k2]={{id=""k2"";a=2;},};)");
    EXPECT_EQ(stored(SOURCE, {.path = "rows", .key = "id"}),
              "T = [k1: [0: {id: \"k1\", a: 1}], k2: [0: {id: \"k2\", a: 2}]]\n");
}

TEST(JsonDataTable, NoCountIsWrittenWithAPrefixEither) {
    EXPECT_EQ(script(R"({"rows":[{"id":"k"}]})", {.path = "rows", .key = "id", .prefix = "P_"}),
              R"(T[k]={{id=""k"";},};)");
}

TEST(JsonDataTable, ARecordWithoutTheKeyMemberIsLeftOut) {
    EXPECT_EQ(script(R"({"rows":[{"a":1},{"id":"k","a":2},{"ID":"x"},{"sub":{"id":"y"}}]})",
                     {.path = "rows", .key = "id"}),
              R"(T[k]={{id=""k"";a=2;},};)");
}

TEST(JsonDataTable, WithoutAKeyNothingIsWritten) {
    EXPECT_EQ(script(R"({"rows":[{"id":"k"}]})", {.path = "rows"}), "");
}

TEST(JsonDataTable, AnEmptyKeyFindsAMemberWithoutAName) {
    EXPECT_EQ(script(R"({"rows":[{"a":1,"":"k"}]})", {.path = "rows"}),
              R"(T[k]={{a=1;=""k"";},};)");
}

TEST(JsonDataTable, RecordsThatAreNoObjectsAreLeftOut) {
    EXPECT_EQ(script(R"({"rows":["id",1,true,null,["id"]]})", {.path = "rows", .key = "id"}), "");
}

TEST(JsonDataTable, AKeyIsReadAsAString) {
    EXPECT_EQ(script(R"({"rows":[{"id":7.50},{"id":true},{"id":null},{"id":[1]},{"id":{}}]})",
                     {.path = "rows", .key = "id"}),
              "T[7.50]={{id=7.5;},};T[true]={{id=1;},};T[null]={{},};T[]={{id[0-0]=1,;},};"
              "T[]={{id={};},};");
}

TEST(JsonDataTable, TheFirstOfSeveralKeyMembersNamesTheRecord) {
    EXPECT_EQ(script(R"({"rows":[{"id":"a","id":"b"}]})", {.path = "rows", .key = "id"}),
              R"(T[a]={{id=""a"";id=""b"";},};)");
}

TEST(JsonDataTable, OfTwoRecordsOfOneKeyTheLaterStays) {
    EXPECT_EQ(stored(R"({"rows":[{"id":"a","v":1},{"id":"b","v":2},{"id":"a","v":3}]})",
                     {.path = "rows", .key = "id"}),
              "T = [a: [0: {id: \"a\", v: 3}], b: [0: {id: \"b\", v: 2}]]\n");
}

TEST(JsonDataTable, AMemberThatIsARecordIsWalkedWithoutItsName) {
    EXPECT_EQ(script(R"({"club":{"id":"k","a":1}})", {.path = "club", .key = "id"}),
              R"(T[k]={{id=""k"";a=1;},};)");
}

TEST(JsonDataTable, RowsCountTheRecordsWithoutAKeyMemberToo) {
    EXPECT_EQ(script(R"({"rows":[{"a":1},{"id":"x"},{"id":"y"},{"id":"z"}]})",
                     {.path = "rows", .key = "id", .fromRow = 1, .numRows = 2}),
              R"(T[x]={{id=""x"";},};T[y]={{id=""y"";},};)");
}

TEST(JsonDataTable, APathThatFindsNothingWritesNothing) {
    EXPECT_EQ(script(R"({"rows":[]})", {.path = "rows", .key = "id"}), "");
    EXPECT_EQ(script(R"({"rows":[{"id":1}]})", {.path = "Rows", .key = "id"}), "");
}

}  // namespace
}  // namespace intake
