#include "workbench/cli/serve/path_match.h"

#include <gtest/gtest.h>

using workbench::matchPath;
using Names = std::vector<std::string>;

TEST(PathMatch, GivesWhatTheStarsStandFor) {
    EXPECT_EQ(matchPath("instances/*/load", "instances/league/load"), Names{"league"});
    EXPECT_EQ(matchPath("instances/*", "instances/a%20b%2Fc"), Names{"a b/c"});
    EXPECT_EQ(matchPath("about", "about"), Names{});
    EXPECT_EQ(matchPath("a/*/b/*", "a/x/b/1"), (Names{"x", "1"}));
}

TEST(PathMatch, IsNothingForAnotherPath) {
    for (const char* const path : {"instances//load", "instances/load", "instances/a/b/load",
                                   "instances/a/loaded", "instance/a/load", ""})
        EXPECT_EQ(matchPath("instances/*/load", path), std::nullopt) << path;
    EXPECT_EQ(matchPath("about", "about/x"), std::nullopt);
    EXPECT_EQ(matchPath("a/*/b/*", "a/x/b"), std::nullopt);
    EXPECT_EQ(matchPath("a/*/b/*", "a/x/b/"), std::nullopt);
}
