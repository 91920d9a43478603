#include "workbench/cli/run/left_over.h"

#include <gtest/gtest.h>

#include <array>

using cobalt::Origin;
using workbench::countLeftOver;
using workbench::namesOfLeftOver;
using workbench::sentenceOfLeftOver;

namespace {

struct LeftOverFields : testing::Test {
    void execute(const char* script, Origin origin) { ASSERT_FALSE(store.execute(script, origin)); }

    cobalt::Store store;
};

}  // namespace

TEST_F(LeftOverFields, AreThoseThatTheLastLoadOfTheirWriterDidNotWrite) {
    execute("T[0-4]=1,2,3,4,5;N=5;", {1, 10});
    execute("T[0-1]=1,2;N=2;", {1, 20});
    const auto found = countLeftOver(store, std::array{0U, 20U});
    EXPECT_EQ(found[1].count, 3U);
    EXPECT_EQ(found[1].oldest, 10U);
    EXPECT_EQ(namesOfLeftOver(store, {1, 20}), "T[2], T[3], T[4]");
}

TEST_F(LeftOverFields, HaveTheAgeOfTheOldest) {
    execute("T[0-2]=1,2,3;", {1, 10});
    execute("T[0-1]=1,2;", {1, 20});
    execute("T[0-0]=1;", {1, 30});
    EXPECT_EQ(countLeftOver(store, std::array{0U, 30U})[1].oldest, 10U);
}

TEST_F(LeftOverFields, AreNotThoseOfAnotherWriter) {
    execute("T[a]={{x=1;},};", {1, 10});
    execute("T[b]={{x=1;},};", {2, 20});
    const auto found = countLeftOver(store, std::array{0U, 10U, 20U});
    EXPECT_EQ(found[1].count, 0U);
    EXPECT_EQ(found[2].count, 0U);
}

TEST_F(LeftOverFields, AreNotColumnsSinceARowIsReplacedAsAWhole) {
    execute("T[a]={{x=1;y=2;},};", {1, 10});
    execute("T[a]={{z=3;},};", {1, 20});
    EXPECT_EQ(countLeftOver(store, std::array{0U, 20U})[1].count, 0U);
}

TEST_F(LeftOverFields, AreNamedByTheFirstFew) {
    execute("A={x=1;};B={x=1;};C={x=1;};D={x=1;};", {1, 10});
    EXPECT_EQ(namesOfLeftOver(store, {1, 20}), "A, B, C and 1 more");
}

TEST_F(LeftOverFields, AreToldInASentence) {
    execute("T[0-2]=1,2,3;", {1, 10});
    EXPECT_EQ(sentenceOfLeftOver(store, {1, 10}), "");
    execute("T[0-0]=1;", {1, 20});
    EXPECT_EQ(sentenceOfLeftOver(store, {1, 20}),
              "2 entries of older loads are left in the data store: T[1], T[2].");
    execute("T[0-1]=1,2;", {1, 30});
    EXPECT_EQ(sentenceOfLeftOver(store, {1, 30}),
              "1 entry of older loads is left in the data store: T[2].");
}
