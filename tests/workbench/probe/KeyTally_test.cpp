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

std::string causeOf(const KeyTally& tally) {
    Ladder ladder;
    tally.tell(ladder);
    return ladder.at(Stage::Key).cause;
}

TEST(KeyTally, TellsAllThatIsWrong) {
    KeyTally tally("id", "member");
    for (const char* key : {"a", "a", ""})
        tally.add(key);
    tally.add(std::nullopt);
    tally.add(std::nullopt);
    EXPECT_EQ(causeOf(tally),
              "The keys are not unique: 1 record of 5 takes the place of an earlier one with the "
              "same key: a. 2 records are left. 2 of 5 records have no such member and are left "
              "out. The key of 1 record is empty.");
}

TEST(KeyTally, TellsEachKeyThatRepeatsOnce) {
    KeyTally tally("id", "member");
    for (const char* key : {"a", "b", "a", "b", "a"})
        tally.add(key);
    EXPECT_EQ(causeOf(tally),
              "The keys are not unique: 3 records of 5 take the place of an earlier one with the "
              "same key: a, b. 2 records are left.");
}

TEST(KeyTally, TellsOfEmptyKeys) {
    KeyTally tally("id", "member");
    for (const char* key : {"a", ""})
        tally.add(key);
    EXPECT_EQ(causeOf(tally), "The key of 1 record is empty.");
    tally.add("");
    EXPECT_EQ(causeOf(tally),
              "The keys are not unique: 1 record of 3 takes the place of an earlier one with the "
              "same key: \"\". 2 records are left. The key of 2 records is empty.");
}

}  // namespace

}  // namespace probe
