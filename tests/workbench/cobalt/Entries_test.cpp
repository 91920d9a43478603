#include <gtest/gtest.h>

#include <string>

#include "workbench/cobalt/Value.h"

namespace cobalt {
namespace {

Entries numbered(int count) {
    Entries entries;
    for (int i = 0; i < count; ++i)
        entries.define("key " + std::to_string(i)) = Value::number(i);
    return entries;
}

TEST(Entries, AreFoundByNameHoweverManyThereAre) {
    for (const int count : {1, 16, 17, 1000}) {
        const Entries entries = numbered(count);
        ASSERT_EQ(entries.size(), static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) {
            const Value* found = entries.find("key " + std::to_string(i));
            ASSERT_TRUE(found) << i << " of " << count;
            EXPECT_EQ(found->number(), i);
        }
        EXPECT_EQ(entries.find("key " + std::to_string(count)), nullptr);
    }
}

TEST(Entries, KeepTheOrderOfTheirCreation) {
    Entries entries = numbered(100);
    entries.define("key 50") = Value::text("changed");
    EXPECT_EQ(entries[50].key, "key 50");
    EXPECT_EQ(entries[50].value.text(), "changed");
    EXPECT_EQ(entries.size(), 100u);
}

TEST(Entries, ACopyIsOfItsOwn) {
    const Entries original = numbered(100);
    Entries copy = original;
    copy.define("key 3") = Value::text("changed");
    copy.define("new") = Value::text("added");
    EXPECT_EQ(original.find("key 3")->text(), "3");
    EXPECT_EQ(original.find("new"), nullptr);
    EXPECT_EQ(copy.find("key 3")->text(), "changed");
    EXPECT_EQ(copy.find("new")->text(), "added");
}

TEST(Entries, MergingSetsTheOnesThatExistAndAddsTheOthers) {
    Entries entries = numbered(2);
    Entries others;
    others.define("key 1") = Value::text("changed");
    others.define("key 2") = Value::text("added");
    entries.merge(others);
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[0].value.text(), "0");
    EXPECT_EQ(entries[1].value.text(), "changed");
    EXPECT_EQ(entries[2].value.text(), "added");
}

}  // namespace
}  // namespace cobalt
