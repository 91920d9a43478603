#include "workbench/cli/run/display_lines.h"

#include <gtest/gtest.h>

#include "workbench/cli/display_text.h"

namespace workbench {
namespace {

InstanceState instance(const char* name, State state, std::size_t records = 20) {
    InstanceState shown;
    shown.name = name;
    shown.state = state;
    shown.records = records;
    shown.age = 3.2;
    shown.duration = 0.04;
    shown.next = 6.8;
    return shown;
}

InstanceState failed(const char* name) {
    InstanceState shown = instance(name, State::Failed, 0);
    shown.before = 20;
    shown.leftOver = 20;
    shown.words = "Could not load \"results.json\"";
    return shown;
}

std::vector<InstanceState> some() {
    return {instance("top", State::Loaded), failed("results"),
            instance("fixtures", State::Empty, 0)};
}

TEST(DisplayLines, ShowEverythingWhereThereIsRoom) {
    const auto lines = displayLines(some(), {119, 24, true, false});
    EXPECT_EQ(lines,
              (std::vector<std::string>{
                  "state      instance        records  left over     age    took  next in",
                  "● LOADED   top                  20                3 s   40 ms      6 s",
                  "✗ FAILED   results          20 → 0         20     3 s   40 ms      6 s  "
                  "Could not load \"results.json\"",
                  "○ EMPTY    fixtures              0                3 s   40 ms      6 s"}));
}

TEST(DisplayLines, KeepToTheWidthOfTheScreen) {
    for (const std::size_t columns : {1U, 12U, 39U, 40U, 60U, 79U, 100U, 199U}) {
        for (const std::string& line : displayLines(some(), {columns, 24, true, false}))
            EXPECT_LE(displayWidth(line), columns) << line;
    }
}

TEST(DisplayLines, DropColumnsOnANarrowScreen) {
    const auto lines = displayLines(some(), {39, 24, true, false});
    EXPECT_EQ(lines[2], "✗ FAILED   results      20 → 0  Could …");
}

TEST(DisplayLines, AreInAsciiWhereTheTerminalHasNothingElse) {
    const auto lines = displayLines(some(), {39, 24, false, false});
    EXPECT_EQ(lines[1], "* LOADED   top              20");
    EXPECT_EQ(lines[2], "x FAILED   results      20 > 0  Could ~");
}

TEST(DisplayLines, ColourTheStateAndOnlyWhatFailedIsRed) {
    const auto lines = displayLines(some(), {79, 24, true, true});
    EXPECT_TRUE(lines[2].starts_with("\x1b[31m✗ FAILED \x1b[0m")) << lines[2];
    for (const std::size_t i : {0U, 1U, 3U})
        EXPECT_EQ(lines[i].find("\x1b[31m"), std::string::npos);
}

TEST(DisplayLines, TheMostUrgentComeFirstWhereThereIsNotRoomForAll) {
    std::vector<InstanceState> many(17, instance("fine", State::Loaded));
    many.insert(many.begin() + 9, failed("lost"));
    many.push_back(instance("none", State::Empty, 0));
    const auto lines = displayLines(many, {79, 6, true, false});
    ASSERT_EQ(lines.size(), 6U);
    EXPECT_EQ(lines[1].substr(0, 19), "✗ FAILED   lost  ");
    EXPECT_EQ(lines[2].substr(0, 17), "○ EMPTY    none");
    EXPECT_EQ(lines[5], "and 15 more, all loaded");
    EXPECT_EQ(displayLines(many, {79, 3, true, false}).back(), "and 18 more, 1 empty, 17 loaded");
}

TEST(DisplayLines, ANameThatIsLongIsCut) {
    const auto lines = displayLines(
        {instance("an instance with a name that is long", State::Loaded)}, {79, 24, true, false});
    EXPECT_EQ(lines[1].substr(0, 34), "● LOADED   an instance wi…    ");
}

TEST(DisplayLines, WhatTheRecordsWereIsLeftOutWhereItDoesNotFit) {
    InstanceState shown = instance("top", State::Loaded, 1200);
    shown.before = 1199;
    EXPECT_EQ(displayLines({shown}, {39, 24, true, false})[1], "● LOADED   top            1200");
}

TEST(DisplayLines, AnErrorOfSeveralLinesIsOne) {
    InstanceState shown = failed("lost");
    shown.words = "first\nsecond\x1b[31m";
    const auto lines = displayLines({shown}, {199, 24, true, false});
    EXPECT_EQ(lines[1].find_first_of("\n\x1b"), std::string::npos);
}

}  // namespace
}  // namespace workbench
