#include "workbench/cli/RecordRange.h"

#include <gtest/gtest.h>

#include "workbench/cli/UsageError.h"

using workbench::readRecordRange;
using workbench::RecordRange;

TEST(RecordRange, ANumberIsARangeOfOne) {
    const RecordRange range = readRecordRange("40");
    EXPECT_FALSE(range.contains(39));
    EXPECT_TRUE(range.contains(40));
    EXPECT_FALSE(range.contains(41));
}

TEST(RecordRange, BothEndsOfARangeBelongToIt) {
    const RecordRange range = readRecordRange("0..2");
    EXPECT_TRUE(range.contains(0));
    EXPECT_TRUE(range.contains(2));
    EXPECT_FALSE(range.contains(3));
}

TEST(RecordRange, SaysWhatWasExpectedAndWhatCame) {
    EXPECT_EQ(RecordRange{}.complaint(0), "Expected at least 1 record; none arrived.");
    EXPECT_EQ(readRecordRange("1").complaint(2), "Expected 1 record; 2 arrived.");
    EXPECT_EQ(readRecordRange("40").complaint(38), "Expected 40 records; 38 arrived.");
    EXPECT_EQ(readRecordRange("10..20").complaint(0), "Expected 10 to 20 records; none arrived.");
}

TEST(RecordRange, AnythingElseIsRefused) {
    for (const char* text : {"", "x", "-1", "1..", "..1", "2..1", "1...2", "1.5", "1 .. 2"}) {
        try {
            readRecordRange(text);
            ADD_FAILURE() << text << " was accepted";
        } catch (const workbench::UsageError& error) {
            EXPECT_EQ(error.what(),
                      "--expect-records takes a number of records such as 40, or a range such as "
                      "10..20, not \"" +
                          std::string(text) + "\".");
        }
    }
}
