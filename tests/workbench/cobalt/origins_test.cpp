// Which load put what into the store.

#include <gtest/gtest.h>

#include "workbench/cobalt/Expression.h"
#include "workbench/cobalt/Store.h"

namespace cobalt {
namespace {

constexpr Origin first{1, 10};
constexpr Origin second{1, 20};

Origin ofEntry(const Store& store, const char* field, std::size_t position) {
    return store.find(field)->value().entries()[position].origin;
}

TEST(Origins, AFieldBearsThatOfTheScriptWhichAssignedItAsAWhole) {
    Store store;
    store.execute("a=1;b={x=1;};", first);
    store.execute("a=2;", second);
    EXPECT_EQ(store.find("a")->origin(), second);
    EXPECT_EQ(store.find("b")->origin(), first);
}

TEST(Origins, EntriesThatALaterScriptDoesNotNameKeepTheirs) {
    Store store;
    store.execute("T[k]={{a=1;},};T[m]={{a=1;},};", first);
    store.execute("T[m]={{b=2;},};", second);
    EXPECT_EQ(ofEntry(store, "T", 0), first);
    EXPECT_EQ(ofEntry(store, "T", 1), second);
    EXPECT_EQ(store.find("T")->origin(), Origin{});
}

TEST(Origins, TheElementsOfAShorterRangeAreNewAndTheRestIsOld) {
    Store store;
    store.execute("T[0-2]=1,2,3;", first);
    store.execute("T[0-0]=9;", second);
    EXPECT_EQ(ofEntry(store, "T", 0), second);
    EXPECT_EQ(ofEntry(store, "T", 1), first);
    EXPECT_EQ(ofEntry(store, "T", 2), first);
}

TEST(Origins, AFieldThatBecomesAnArrayHasNoneOfItsOwn) {
    Store store;
    store.execute("T=5;", first);
    store.execute("T[k]=6;", second);
    EXPECT_EQ(store.find("T")->origin(), Origin{});
    EXPECT_EQ(ofEntry(store, "T", 0), second);
}

TEST(Origins, AScriptThatFailsChangesNone) {
    Store store;
    store.execute("a=1;T[k]=1;", first);
    EXPECT_TRUE(store.execute("a=2;T[k]=2;T[", second));
    EXPECT_EQ(store.find("a")->origin(), first);
    EXPECT_EQ(ofEntry(store, "T", 0), first);
}

TEST(Origins, WhatAnActionAssignsHasNone) {
    Store store;
    store.execute("a=1;", first);
    Expression action;
    ASSERT_FALSE(action.parse("a=a+1"));
    ASSERT_FALSE(action.execute(store, {}, {}));
    EXPECT_EQ(store.find("a")->origin(), Origin{});
}

}  // namespace
}  // namespace cobalt
