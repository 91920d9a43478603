#include <gtest/gtest.h>

#include "tests/readers/json/read.h"

namespace intake {
namespace {

TEST(JsonDataStructure, WithAKeyARecordIsNamedByTheValueOfItsKeyMember) {
    constexpr auto SOURCE = R"({"rows":[{"id":"home","a":1},{"id":"away","a":2}]})";
    EXPECT_EQ(script(SOURCE, {.path = "rows", .mode = DATA_STRUCTURE, .key = "id"}),
              R"(home={id=""home"";a=1;};away={id=""away"";a=2;};;READER_NUM_RECORDS=2;)");
    EXPECT_EQ(stored(SOURCE, {.path = "rows", .mode = DATA_STRUCTURE, .key = "id"}),
              "home = {id: \"home\", a: 1}\naway = {id: \"away\", a: 2}\nREADER_NUM_RECORDS = 2\n");
}

TEST(JsonDataStructure, ARecordWithoutTheKeyMemberIsLeftOutButCounted) {
    EXPECT_EQ(script(R"({"rows":[{"a":1},{"id":"k"},"id",3]})",
                     {.path = "rows", .mode = DATA_STRUCTURE, .key = "id"}),
              R"(k={id=""k"";};;READER_NUM_RECORDS=4;)");
}

TEST(JsonDataStructure, AKeyIsReadAsAString) {
    EXPECT_EQ(script(R"({"rows":[{"id":7.50},{"id":false},{"id":null}]})",
                     {.path = "rows", .mode = DATA_STRUCTURE, .key = "id"}),
              "7.50={id=7.5;};false={id=0;};null={};;READER_NUM_RECORDS=3;");
}

TEST(JsonDataStructure, WithoutAKeyEveryRecordHasTheTargetsName) {
    EXPECT_EQ(script(R"({"rows":[{"a":1},{"a":2}]})", {.path = "rows", .mode = DATA_STRUCTURE}),
              "T={a=1;};T={a=2;};;READER_NUM_RECORDS=2;");
}

TEST(JsonDataStructure, ARecordWithANameOfItsOwnKeepsIt) {
    constexpr auto SOURCE = R"({"hours":{"mon":{"id":"x","from":9},"sat":{"id":"y","from":10}}})";
    EXPECT_EQ(script(SOURCE, {.path = "hours/*", .mode = DATA_STRUCTURE}),
              R"(mon={id=""x"";from=9;};sat={id=""y"";from=10;};;READER_NUM_RECORDS=2;)");
    EXPECT_EQ(script(SOURCE, {.path = "hours/*", .mode = DATA_STRUCTURE, .key = "id"}),
              R"(mon={id=""x"";from=9;};sat={id=""y"";from=10;};;READER_NUM_RECORDS=2;)");
}

TEST(JsonDataStructure, ScalarsAndArraysAreMembersOfTheStore) {
    EXPECT_EQ(script(R"({"rows":[1,"x",true,null,[2,3],[[4]]]})",
                     {.path = "rows", .mode = DATA_STRUCTURE}),
              R"(T=1;T=""x"";T=1;T[0-1]=2,3,;T[0-0]={[0-0]=4,;};;READER_NUM_RECORDS=6;)");
}

TEST(JsonDataStructure, NestedObjectsAreNestedStructures) {
    constexpr auto SOURCE = R"({"m":{"home":{"name":"Reds","score":{"now":2,"half":[1,0]}}}})";
    EXPECT_EQ(script(SOURCE, {.path = "m", .mode = DATA_STRUCTURE}),
              R"(m={home={name=""Reds"";score={now=2;half[0-1]=1,0,;};};};;READER_NUM_RECORDS=1;)");
    EXPECT_EQ(stored(SOURCE, {.path = "m", .mode = DATA_STRUCTURE}),
              "m = {home: {name: \"Reds\", score: {now: 2, half: [0: 1, 1: 0]}}}\n"
              "READER_NUM_RECORDS = 1\n");
}

TEST(JsonDataStructure, ThePrefixStandsBeforeTheCount) {
    EXPECT_EQ(script(R"({"a":{}})", {.path = "a", .mode = DATA_STRUCTURE, .prefix = "P_"}),
              "a={};;P_READER_NUM_RECORDS=1;");
}

TEST(JsonDataStructure, APathThatFindsNothingWritesACountOfZero) {
    EXPECT_EQ(script(R"({"a":1})", {.path = "b", .mode = DATA_STRUCTURE}),
              ";READER_NUM_RECORDS=0;");
    EXPECT_EQ(script(R"({"a":1})", {.path = "b", .mode = DATA_STRUCTURE, .key = "id"}),
              ";READER_NUM_RECORDS=0;");
}

}  // namespace
}  // namespace intake
