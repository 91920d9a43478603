#include "workbench/cli/serve/path_match.h"

#include <gtest/gtest.h>

using workbench::matchPath;

TEST(PathMatch, GivesWhatTheStarStandsFor) {
    EXPECT_EQ(matchPath("instances/*/load", "instances/league/load"), "league");
    EXPECT_EQ(matchPath("instances/*", "instances/a%20b%2Fc"), "a b/c");
    EXPECT_EQ(matchPath("about", "about"), "");
}

TEST(PathMatch, IsNothingForAnotherPath) {
    for (const char* const path : {"instances//load", "instances/load", "instances/a/b/load",
                                   "instances/a/loaded", "instance/a/load", ""})
        EXPECT_EQ(matchPath("instances/*/load", path), std::nullopt) << path;
    EXPECT_EQ(matchPath("about", "about/x"), std::nullopt);
}
