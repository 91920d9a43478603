#include <gtest/gtest.h>

#include "tests/readers/json/read.h"

namespace intake {
namespace {

TEST(JsonSharedMemory, TheRecordsAreJoinedByTheDelimiter) {
    EXPECT_EQ(script(R"({"rows":[{"n":"x"},{"n":"y"},{"n":"z"}]})",
                     {.path = "rows/n", .mode = SHARED_MEMORY, .delimiter = "|"}),
              "x|y|z");
}

TEST(JsonSharedMemory, TheDelimiterMayBeEmptyOrLong) {
    EXPECT_EQ(script("[1,2,3]", {.path = "*", .mode = SHARED_MEMORY, .delimiter = ""}), "123");
    EXPECT_EQ(script("[1,2,3]", {.path = "*", .mode = SHARED_MEMORY, .delimiter = " and\n"}),
              "1 and\n2 and\n3");
}

TEST(JsonSharedMemory, EveryTypeIsReadAsAString) {
    EXPECT_EQ(
        script(R"(["x",7.50,true,null,[1],{"a":1},""])", {.path = "*", .mode = SHARED_MEMORY}),
        "x|7.50|true|null|1||");
}

TEST(JsonSharedMemory, KeyPrefixAndTargetAreNotUsed) {
    EXPECT_EQ(script(R"({"rows":["x"]})",
                     {.path = "rows", .mode = SHARED_MEMORY, .key = "id", .prefix = "P_"}),
              "x");
}

TEST(JsonSharedMemory, OneRecordHasNoDelimiter) {
    EXPECT_EQ(script(R"({"n":"x"})", {.path = "n", .mode = SHARED_MEMORY}), "x");
}

TEST(JsonSharedMemory, APathThatFindsNothingWritesNothing) {
    EXPECT_EQ(script(R"({"n":"x"})", {.path = "m", .mode = SHARED_MEMORY}), "");
}

TEST(JsonSharedMemory, WithoutAPathTheDocumentIsWalked) {
    EXPECT_EQ(script(R"({"n":"x"})", {.mode = SHARED_MEMORY}), R"(T={n=""x"";};)");
}

}  // namespace
}  // namespace intake
