#include "workbench/probe/explore/PathTree.h"

#include <gtest/gtest.h>

#include "workbench/probe/explore/PathSearch.h"

namespace probe {

namespace {

constexpr std::size_t plenty = 100'000'000;

TEST(PathTree, HasEachNameOfAPlaceOnce) {
    PathTree tree(plenty, "");
    for (int record = 0; record < 1000; ++record) {
        std::size_t hint = 0;
        for (int name = 0; name < 40; ++name)
            tree.count(tree.child(PathTree::ROOT, "n" + std::to_string(name), hint),
                       PathTree::Kind::Number, std::to_string(record));
    }
    EXPECT_EQ(tree.at(PathTree::ROOT).children.size(), 40U);
    const PathTree::Id found = tree.find(PathTree::ROOT, "n7");
    ASSERT_NE(found, PathTree::NONE);
    EXPECT_EQ(tree.at(found).records, 1000U);
    EXPECT_EQ(tree.at(found).value, "0");
}

TEST(PathTree, FindsEachNameHoweverManyThereAre) {
    for (int names = 14; names < 20; ++names) {
        PathTree tree(plenty, "");
        std::size_t hint = 0;
        for (int name = 0; name < names; ++name) {
            const PathTree::Id made = tree.child(PathTree::ROOT, std::to_string(name), hint);
            EXPECT_EQ(tree.find(PathTree::ROOT, std::to_string(name)), made);
            EXPECT_EQ(tree.find(PathTree::ROOT, "0"), tree.at(PathTree::ROOT).children.front());
        }
    }
}

TEST(PathTree, KeepsWhatIsSearchedBelowItsPlaceOnly) {
    PathTree tree(plenty, "");
    tree.keep({"a"});
    PathSearch search(tree, "x", {"a"});
    for (const char* const place : {"b", "a", "c"}) {
        std::size_t hint = 0;
        search.child(search.child(PathSink::ROOT, place, hint), "x", hint);
    }
    EXPECT_NE(tree.find(tree.find(PathTree::ROOT, "a"), "x"), PathTree::NONE);
    EXPECT_EQ(tree.at(PathTree::ROOT).children.size(), 1U);
}

TEST(PathTree, LeavesOutNamesForWhichThereIsNoRoom) {
    constexpr std::size_t names = 100'000;
    PathTree tree(0, "");
    std::size_t hint = 0;
    for (std::size_t name = 0; name < names; ++name)
        tree.child(PathTree::ROOT, std::to_string(name), hint);
    const PathTree::Node& root = tree.at(PathTree::ROOT);
    EXPECT_LE(root.children.size(), 1000U);
    EXPECT_EQ(root.children.size() + root.leftOut, names);
    EXPECT_EQ(tree.dropped(), root.leftOut);
}

TEST(PathTree, GrowsOnlyBelowAPlace) {
    PathTree tree(plenty, "");
    const PathTree::Id place = tree.keep({"a", "b"});
    EXPECT_FALSE(tree.hasMet({"a", "b"}));
    tree.growOnlyBelow(place);
    std::size_t hint = 0;
    EXPECT_EQ(tree.child(PathTree::ROOT, "other", hint), PathTree::NONE);
    const PathTree::Id a = tree.child(PathTree::ROOT, "a", hint);
    hint = 0;
    EXPECT_EQ(tree.child(a, "b", hint), place);
    EXPECT_TRUE(tree.hasMet({"a", "b"}));
    hint = 0;
    const PathTree::Id below = tree.child(place, "c", hint);
    ASSERT_NE(below, PathTree::NONE);
    hint = 0;
    EXPECT_NE(tree.child(below, "d", hint), PathTree::NONE);
    EXPECT_EQ(tree.dropped(), 0U);
}

TEST(PathTree, ShowsWholeLevelsAsLongAsTheyFit) {
    PathTree tree(plenty, "");
    std::size_t hint = 0;
    const PathTree::Id a = tree.child(PathTree::ROOT, "a", hint);
    const PathTree::Id b = tree.child(PathTree::ROOT, "b", hint);
    std::size_t below = 0;
    const PathTree::Id c = tree.child(a, "c", below);
    EXPECT_EQ(tree.shown(PathTree::ROOT, {"", "", 3}), (std::vector{a, c, b}));
    EXPECT_EQ(tree.shown(PathTree::ROOT, {"", "", 2}), (std::vector{a, b}));
    EXPECT_EQ(tree.shown(PathTree::ROOT, {"", "", 1}), (std::vector{a, b}));
}

TEST(PathTree, FindsNamesAndValues) {
    PathTree tree(plenty, "ROVERS");
    std::size_t hint = 0;
    const PathTree::Id club = tree.child(PathTree::ROOT, "club", hint);
    tree.count(club, PathTree::Kind::Text, "Greywharf");
    tree.count(club, PathTree::Kind::Text, "Hollinbeck Rovers");
    const PathTree::Id name = tree.child(PathTree::ROOT, "rovers", hint);
    tree.child(PathTree::ROOT, "other", hint);
    EXPECT_EQ(tree.shown(PathTree::ROOT, {"", "ROVERS", 40}), (std::vector{club, name}));
    EXPECT_EQ(tree.at(club).match, "Hollinbeck Rovers");
}

}  // namespace

}  // namespace probe
