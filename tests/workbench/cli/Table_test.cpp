#include "workbench/cli/Table.h"

#include <gtest/gtest.h>

using workbench::PageSize;
using workbench::Table;

TEST(Table, AlignsTextsLeftAndNumbersRight) {
    const Table table{"League", {"key", "pts"}, {{"ARS", "7"}, {"BRENT", "12.5"}}, 0};
    EXPECT_EQ(table.print({}),
              "League\n"
              "key     pts\n"
              "-----  ----\n"
              "ARS       7\n"
              "BRENT  12.5\n");
}

TEST(Table, AnEmptyCellDoesNotMakeANumberColumnText) {
    const Table table{"", {"n"}, {{"10"}, {""}, {"5"}}, 0};
    EXPECT_EQ(table.print({}), " n\n--\n10\n\n 5\n");
}

TEST(Table, AlignsByDisplayedColumnsNotBytes) {
    const Table table{"", {"a", "b"}, {{"Müller", "x"}, {"東京", "x"}}, 0};
    EXPECT_EQ(table.print({}),
              "a       b\n"
              "------  -\n"
              "Müller  x\n"
              "東京    x\n");
}

TEST(Table, LeavesOutTheColumnsThatDoNotFitAndSaysHowMany) {
    const Table table{"", {"aaaa", "bbbb", "cccc", "dddd"}, {{"1", "2", "3", "4"}}, 0};
    EXPECT_EQ(table.print({12, 40, 40}),
              "aaaa  bbbb\n"
              "----  ----\n"
              "   1     2\n"
              "(2 more columns; load --out json shows everything)\n");
}

TEST(Table, SaysHowManyRowsAreMissing) {
    const Table table{"", {"a"}, {{"x"}}, 1};
    EXPECT_EQ(table.print({}), "a\n-\nx\n(1 more row; load --out json shows everything)\n");
}

TEST(Table, CutsALongCell) {
    const Table table{"", {"a", "b"}, {{"abcdefgh", "x"}}, 0};
    EXPECT_EQ(table.print({80, 40, 5}), "a      b\n-----  -\nabcd…  x\n");
}

TEST(Table, AVeryLongTextFillsNoOtherRowWithBlanksWhereNothingIsCut) {
    const std::string text(201, 'x');
    const Table table{"", {"a", "b"}, {{text, "1"}, {"y", "22"}}, 0};
    constexpr PageSize all{workbench::unlimited, workbench::unlimited, workbench::unlimited};
    EXPECT_EQ(table.print(all), "a   b\n-  --\n" + text + "   1\ny  22\n");
}

TEST(Table, LetsTheLastColumnHaveTheRoomThatIsLeft) {
    const Table table{"", {"a", "b"}, {{"x", "abcdefgh"}}, 0};
    EXPECT_EQ(table.print({80, 40, 5}), "a  b\n-  --------\nx  abcdefgh\n");
    EXPECT_EQ(table.print({9, 40, 5}), "a  b\n-  ------\nx  abcde…\n");
}

TEST(Table, TheFirstColumnIsShownInTheNarrowestWindow) {
    const Table table{"", {"a", "b"}, {{"abcdefgh", "x"}}, 0};
    EXPECT_EQ(table.print({4, 40, 40}),
              "a\n"
              "----\n"
              "abc…\n"
              "(1 more column; load --out json shows everything)\n");
}
