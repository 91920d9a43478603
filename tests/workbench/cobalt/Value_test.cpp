#include "workbench/cobalt/Value.h"

#include <gtest/gtest.h>

#include <limits>

namespace cobalt {
namespace {

TEST(Value, IsAnEmptyTextAtFirst) {
    const Value value;
    EXPECT_EQ(value.kind(), Kind::Text);
    EXPECT_EQ(value.text(), "");
}

TEST(Value, AnUnquotedNumberHasItsWritingAndItsNumber) {
    const Value value = Value::fromUnquoted("1.23457e+06");
    EXPECT_EQ(value.kind(), Kind::Number);
    EXPECT_EQ(value.text(), "1.23457e+06");
    EXPECT_EQ(value.number(), 1234570.0);
}

TEST(Value, AnUnquotedNumberBeyondTheRangeIsInfiniteOrZero) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Value::fromUnquoted("1e999").number(), infinity);
    EXPECT_EQ(Value::fromUnquoted("-1.5e999").number(), -infinity);
    EXPECT_EQ(Value::fromUnquoted("1e-999").number(), 0.0);
}

TEST(Value, AnUnquotedTextIsNoNumber) {
    for (const char* text :
         {"", "-", ".", "abc", "inf", "nan", "-inf", "+1", "1 2", "0x10", "1e"}) {
        EXPECT_EQ(Value::fromUnquoted(text).kind(), Kind::Text) << text;
        EXPECT_EQ(Value::fromUnquoted(text).text(), text);
    }
}

TEST(Value, ATextHasNoNumber) {
    EXPECT_EQ(Value::text("5").number(), 0.0);
}

TEST(Value, ACalculatedNumberIsWrittenWithFifteenDigitsAtMost) {
    EXPECT_EQ(Value::number(3).text(), "3");
    EXPECT_EQ(Value::number(0.1 + 0.2).text(), "0.3");
    EXPECT_EQ(Value::number(1234567.25).text(), "1234567.25");
    EXPECT_EQ(Value::number(-1e20).text(), "-1e+20");
}

TEST(Value, OnlyStructuresAndArraysHaveEntries) {
    Entries entries;
    entries.define("a") = Value::number(1);
    EXPECT_EQ(Value::structure(entries).entries().size(), 1u);
    EXPECT_EQ(Value::array(entries).entries().size(), 1u);
    EXPECT_TRUE(Value::text("a").entries().empty());
    EXPECT_TRUE(Value::number(1).entries().empty());
}

}  // namespace
}  // namespace cobalt
