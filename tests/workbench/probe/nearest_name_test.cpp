#include "workbench/probe/nearest_name.h"

#include <gtest/gtest.h>

using probe::nearestName;

TEST(NearestName, IsTheOneWithTheFewestTypingErrors) {
    EXPECT_EQ(nearestName("filenam", {"mode", "filename", "sheet"}), "filename");
    EXPECT_EQ(nearestName("modes", {"queryMode", "mode", "key"}), "mode");
}

TEST(NearestName, DoesNotMindLetterCase) {
    EXPECT_EQ(nearestName("QUERYMODE", {"mode", "queryMode"}), "queryMode");
}

TEST(NearestName, IsTheFirstAmongEquals) {
    EXPECT_EQ(nearestName("x", {"ab", "cd"}), "ab");
}

TEST(NearestName, IsEmptyWithoutNames) {
    EXPECT_EQ(nearestName("x", {}), "");
}
