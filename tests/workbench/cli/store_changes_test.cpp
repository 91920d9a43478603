#include "workbench/cli/store_changes.h"

#include <gtest/gtest.h>

using cobalt::Origin;
using workbench::compareStores;
using workbench::StoreChange;
using workbench::StoreChanges;

namespace {

struct StoreChangesOf : testing::Test {
    /// What a load with that script would change, a line each.
    std::string changes(const char* script, std::size_t most = 10) {
        cobalt::Store after = store.copyIf([](const cobalt::Field&) { return true; });
        EXPECT_FALSE(after.execute(script, load));
        const StoreChanges found = compareStores(store, after, load, most);
        std::string lines;
        for (const StoreChange& each : found.listed)
            lines += names[static_cast<std::size_t>(each.kind)] + each.field + "[" + each.key +
                     "] " + each.before + " → " + each.after + "\n";
        return lines + std::to_string(found.same) + " same, " + std::to_string(found.leftOut) +
               " left out\n";
    }

    const std::array<std::string, 4> names{"new ", "changed ", "gone ", "left "};
    const Origin load{1, 20};
    cobalt::Store store;
};

}  // namespace

TEST_F(StoreChangesOf, ANewFieldAreItsEntries) {
    EXPECT_EQ(changes("T[0-1]=1,2;N=2;"),
              "new T[0]  → 1\nnew T[1]  → 2\nnew N[]  → 2\n0 same, 0 left out\n");
}

TEST_F(StoreChangesOf, EntriesAreToldOneByOne) {
    store.execute("T[a]={{x=1;},};T[b]={{x=2;},};", {1, 10});
    EXPECT_EQ(changes("T[a]={{x=1;},};T[b]={{x=3;},};T[c]={{x=4;},};"),
              "changed T[b] [{x: 2}] → [{x: 3}]\nnew T[c]  → [{x: 4}]\n1 same, 0 left out\n");
}

TEST_F(StoreChangesOf, WhatAnOlderLoadWroteIsLeft) {
    store.execute("T[0-2]=1,2,3;", {1, 10});
    EXPECT_EQ(changes("T[0-1]=1,2;"), "left T[2] 3 → 3\n2 same, 0 left out\n");
}

TEST_F(StoreChangesOf, WhatAnotherWriterWroteStaysTheSame) {
    store.execute("T[0-2]=1,2,3;", {2, 10});
    EXPECT_EQ(changes("T[0-1]=1,2;"), "3 same, 0 left out\n");
}

TEST_F(StoreChangesOf, EntriesOfAFieldThatIsSetAsAWholeMayGo) {
    store.execute("S={x=1;y=2;};", {1, 10});
    EXPECT_EQ(changes("S={x=1;};"), "gone S[y] 2 → \n1 same, 0 left out\n");
}

TEST_F(StoreChangesOf, ATextMayBecomeAnArray) {
    store.execute("T=text;", {1, 10});
    EXPECT_EQ(changes("T[0]=1;"), "changed T[] text → [1]\n0 same, 0 left out\n");
}

TEST_F(StoreChangesOf, NoMoreThanAreWantedAreListed) {
    EXPECT_EQ(changes("T[0-4]=1,2,3,4,5;", 2),
              "new T[0]  → 1\nnew T[1]  → 2\n0 same, 3 left out\n");
}

TEST_F(StoreChangesOf, LongValuesAreCut) {
    store.execute("T=" + std::string(300, 'x') + ";", {1, 10});
    EXPECT_EQ(changes("T=;"),
              "changed T[] " + std::string(199, 'x') + "… → \n0 same, 0 left out\n");
}
