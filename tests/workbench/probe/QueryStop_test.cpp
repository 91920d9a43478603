#include "workbench/probe/explain/QueryStop.h"

#include <gtest/gtest.h>

namespace probe {

namespace {

TEST(ShownQuery, IsWholeWhereItIsShort) {
    std::size_t offset = 7;
    EXPECT_EQ(shownQuery("SELECT\n* FROM\tt", offset), "SELECT * FROM t");
    EXPECT_EQ(offset, 7U);
}

TEST(ShownQuery, IsCutBetweenCharacters) {
    const std::string dashes(40, '-');
    std::size_t offset = 71;
    const std::string shown = shownQuery(dashes + "\u20AC" + dashes, offset);
    EXPECT_EQ(shown, "…\u20AC" + dashes);
    EXPECT_EQ(offset, 34U);

    offset = 0;
    const std::string start(69, '-');
    EXPECT_EQ(shownQuery(start + "\u20AC" + dashes, offset), start + "\u20AC…");
    EXPECT_EQ(offset, 0U);
}

}  // namespace

}  // namespace probe
