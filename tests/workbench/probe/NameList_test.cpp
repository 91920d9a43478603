#include "workbench/probe/NameList.h"

#include <gtest/gtest.h>

#include "workbench/probe/words.h"

namespace probe {

namespace {

using Names = std::vector<std::string>;

TEST(NameList, HasEachNameOnceInOrder) {
    NameList list;
    for (const char* name : {"id", "name", "id", "goals", "name", "id", "name", "goals"})
        list.add(name);
    EXPECT_EQ(list.names(), (Names{"id", "name", "goals"}));
}

TEST(NameList, TakesManyNames) {
    NameList list;
    for (int name = 0; name < 300'000; ++name)
        list.add("n" + std::to_string(name));
    EXPECT_EQ(list.names().size(), 300'000U);
    EXPECT_EQ(nearName("n299990x", list.names()), "n299990");
}

TEST(NameList, IsToldWithHowManyMoreThereAre) {
    NameList list;
    for (int name = 0; name < 2500; ++name)
        list.add(std::to_string(name));
    EXPECT_EQ(listOf(list.names()), "0, 1, 2, 3, 4, 5, 6, 7 and 2492 more");
    EXPECT_EQ(listOf({"a"}, 2), "a and 2 more");
}

TEST(NearName, IsNotLookedForAmongVeryLongNames) {
    const Names names(1000, std::string(1'000'000, 'x'));
    EXPECT_EQ(nearName(std::string(150, 'x'), names), "");
    EXPECT_EQ(nearName(std::string(1'000'000, 'x'), names), "");
}

}  // namespace

}  // namespace probe
