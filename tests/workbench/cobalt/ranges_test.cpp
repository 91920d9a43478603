#include <gtest/gtest.h>

#include "tests/workbench/cobalt/show.h"

namespace cobalt {
namespace {

TEST(Range, TakesOneValueAfterTheOther) {
    EXPECT_EQ(execute("T[0-2]=\"\"x\"\",\"\"y\"\",\"\"z\"\"; READER_NUM_RECORDS=3;"),
              "T = [0: \"x\", 1: \"y\", 2: \"z\"]\nREADER_NUM_RECORDS = 3\n");
}

TEST(Range, MayBeginAnywhere) {
    EXPECT_EQ(execute("T[0-3]=a,b,c,d;T[2-3]=e,f;T[10-11]=g,h;"),
              "T = [0: \"a\", 1: \"b\", 2: \"e\", 3: \"f\", 10: \"g\", 11: \"h\"]\n");
}

TEST(Range, WithFewerValuesLeavesItsLastElementsAsTheyWere) {
    EXPECT_EQ(execute("T[0-3]=1,2,3,4;T[0-3]=\"\"a\"\",2,1,;"),
              "T = [0: \"a\", 1: 2, 2: 1, 3: 4]\n");
}

TEST(Range, DoesNotMakeElementsWithoutValues) {
    EXPECT_EQ(execute("T[0-9000000000000000000]=1,2,;"), "T = [0: 1, 1: 2]\n");
}

TEST(Range, TakesTheElementsOfOneList) {
    EXPECT_EQ(execute("n[0-1]={{a=1;},{a=2;},};m[4-5]={{a=1;},{a=2;},};"),
              "n = [0: {a: 1}, 1: {a: 2}]\nm = [4: {a: 1}, 5: {a: 2}]\n");
}

TEST(Range, TakesStructuresSeparatedByCommas) {
    EXPECT_EQ(execute("n[0-1]={a=1;},{a=2;};m[0-0]={a=3;};"),
              "n = [0: {a: 1}, 1: {a: 2}]\nm = [0: {a: 3}]\n");
}

TEST(Range, WhoseLastIsBelowTheFirstIsEmpty) {
    EXPECT_EQ(execute("T[0--1]=; READER_NUM_RECORDS=0;"), "T = []\nREADER_NUM_RECORDS = 0\n");
    EXPECT_EQ(execute("T[0--6]=; READER_NUM_RECORDS=-5;"), "T = []\nREADER_NUM_RECORDS = -5\n");
    EXPECT_EQ(execute("T[3-1]=;"), "T = []\n");
}

TEST(Range, ThatIsEmptyLeavesTheElementsAsTheyWere) {
    EXPECT_EQ(execute("T[0-1]=1,2,;T[0--1]=;"), "T = [0: 1, 1: 2]\n");
}

TEST(Range, OfAMemberIsAListInTheStructure) {
    EXPECT_EQ(execute("s={tags[0-1]=\"\"a\"\",\"\"b\"\",;none[0--1]=;};"),
              "s = {tags: [0: \"a\", 1: \"b\"], none: []}\n");
}

TEST(Range, WithMoreValuesThanItHasRoomForIsAnError) {
    EXPECT_EQ(execute("a=1;T[0-1]=1,2,3;"),
              "1:12 expected at most 2 values for the range [0-1], found 3");
    EXPECT_EQ(execute("T[0-0]={{a=1;},{a=2;},};"),
              "1:8 expected at most 1 values for the range [0-0], found 2");
}

TEST(Range, ThatIsEmptyWithAValueIsAnError) {
    EXPECT_EQ(execute("T[2020-21]={{a=1;},};"),
              "1:12 expected no value for the range [2020-21], which is empty");
}

TEST(Range, MayBeginAtTheLargestNumber) {
    EXPECT_EQ(execute("T[9223372036854775807-9223372036854775807]={{a=1;},};"),
              "T = [9223372036854775807: {a: 1}]\n");
    EXPECT_EQ(execute("T[9223372036854775807-1]={{a=1;},};"),
              "1:26 expected no value for the range [9223372036854775807-1], which is empty");
}

TEST(Range, BeyondTheLargestNumberIsAKey) {
    EXPECT_EQ(execute("T[0-99999999999999999999]=1;"), "T = [0-99999999999999999999: 1]\n");
}

}  // namespace
}  // namespace cobalt
