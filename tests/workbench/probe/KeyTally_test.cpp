#include "workbench/probe/explain/KeyTally.h"

#include <gtest/gtest.h>

namespace probe {

namespace {

TEST(KeyTally, CountsEachKeyOnce) {
    KeyTally tally("id", "member");
    for (const char* key : {"7", "9", "7"})
        tally.add(key);
    tally.add(std::nullopt);
    EXPECT_EQ(tally.records(), 4U);
    EXPECT_EQ(tally.entries(), 2U);
    EXPECT_EQ(tally.missing(), 1U);
}

TEST(KeyTally, CountsAKeyThatReadsAsARangeAsItsFirstElement) {
    KeyTally tally("id", "member");
    for (const char* key : {"7-9", "7", "2027-05-01"})
        tally.add(key);
    EXPECT_EQ(tally.entries(), 2U);
    Ladder ladder;
    tally.tell(ladder);
    EXPECT_EQ(ladder.at(Stage::Key).state, State::Warning);
}

}  // namespace

}  // namespace probe
