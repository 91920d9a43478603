#include "pipeline/RowRange.h"

#include <gtest/gtest.h>

#include <limits>

namespace intake {

namespace {

constexpr int32_t HIGHEST = std::numeric_limits<int32_t>::max();
constexpr int32_t LOWEST = std::numeric_limits<int32_t>::min();

RowRange rangeOf(int32_t fromRow, int32_t numRows, int64_t rowCount) {
    RequestRecord request;
    request.fromRow = fromRow;
    request.numRows = numRows;
    return RowRange(request, rowCount);
}

void expectRange(const RowRange& range, int64_t first, int64_t end, int64_t count) {
    EXPECT_EQ(range.first(), first);
    EXPECT_EQ(range.end, end);
    EXPECT_EQ(range.count(), count);
}

}  // namespace

TEST(RowRange, AMillionRowsOfThreeAreThree) {
    expectRange(rangeOf(0, 1000000, 3), 0, 3, 3);
}

TEST(RowRange, StartsAndEndsInsideTheRows) {
    expectRange(rangeOf(2, 3, 10), 2, 5, 3);
}

TEST(RowRange, ReachesTheLastRowExactly) {
    expectRange(rangeOf(7, 3, 10), 7, 10, 3);
}

TEST(RowRange, IsCutAtTheLastRow) {
    expectRange(rangeOf(8, 3, 10), 8, 10, 2);
}

TEST(RowRange, ANegativeFirstRowAddressesAsZeroAndStaysUnclampedInTheCount) {
    expectRange(rangeOf(-2, 5, 10), 0, 3, 5);
}

TEST(RowRange, ARangeThatEndsBeforeTheFirstRowDeliversNone) {
    expectRange(rangeOf(-5, 3, 10), 0, -2, 3);
}

TEST(RowRange, StartingPastTheEndDeliversNoneAndCountsNegative) {
    expectRange(rangeOf(5, 4, 3), 5, 3, -2);
}

TEST(RowRange, StartingAtTheEndDeliversNone) {
    expectRange(rangeOf(3, 4, 3), 3, 3, 0);
}

TEST(RowRange, ANegativeNumberOfRowsDeliversNoneAndCountsNegative) {
    expectRange(rangeOf(2, -5, 10), 2, -3, -5);
}

TEST(RowRange, OfNoRowsIsEmpty) {
    expectRange(rangeOf(0, 1000000, 0), 0, 0, 0);
}

TEST(RowRange, TheHighestNumbersDoNotOverflow) {
    expectRange(rangeOf(HIGHEST, HIGHEST, int64_t{1} << 33), HIGHEST, int64_t{2} * HIGHEST,
                HIGHEST);
}

TEST(RowRange, TheLowestNumbersDoNotOverflow) {
    expectRange(rangeOf(LOWEST, LOWEST, 10), 0, int64_t{2} * LOWEST, LOWEST);
}

}  // namespace intake
