#include "workbench/cli/JsonWriter.h"

#include <gtest/gtest.h>

#include <limits>

using workbench::JsonWriter;

namespace {

std::string numberAs(std::string_view written, double value) {
    JsonWriter out;
    out.number(written, value);
    return out.take();
}

}  // namespace

TEST(JsonWriter, WritesANumberAsItWasWritten) {
    for (const char* written : {"0", "-0.5", "7.50", "1e9", "1.5E-3", "1.23457e+06"})
        EXPECT_EQ(numberAs(written, 1), std::string(written) + "\n");
}

TEST(JsonWriter, WritesTheValueOfANumberThatJsonWouldNotTake) {
    EXPECT_EQ(numberAs("007", 7), "7\n");
    EXPECT_EQ(numberAs(".5", 0.5), "0.5\n");
    EXPECT_EQ(numberAs("1.", 1), "1\n");
}

TEST(JsonWriter, WritesAnInfiniteNumberAsText) {
    EXPECT_EQ(numberAs("inf", std::numeric_limits<double>::infinity()), "\"inf\"\n");
}

TEST(JsonWriter, NestsAndSeparates) {
    JsonWriter out;
    out.open('{');
    out.name("a");
    out.open('[');
    out.boolean(true);
    out.number(2);
    out.close(']');
    out.name("b");
    out.open('{');
    out.close('}');
    out.close('}');
    EXPECT_EQ(out.take(), "{\n  \"a\": [\n    true,\n    2\n  ],\n  \"b\": {}\n}\n");
}

TEST(JsonWriter, WritesOneLineWhereThatIsAskedFor) {
    JsonWriter out(JsonWriter::Layout::OneLine);
    out.open('{');
    out.name("a");
    out.text("x,");
    out.name("b");
    out.number("1", 1);
    out.close('}');
    EXPECT_EQ(out.take(), "{\"a\": \"x,\", \"b\": 1}\n");
}

TEST(JsonWriter, WritesMembersOfEachKind) {
    JsonWriter out(JsonWriter::Layout::OneLine);
    out.open('{');
    out.member("text", "x");
    out.member("whole", std::size_t{1'000'000});
    out.member("number", 0.5);
    out.member("switch", true);
    out.member("known", std::optional<std::size_t>(3));
    out.member("unknown", std::optional<double>());
    out.close('}');
    EXPECT_EQ(out.take(),
              "{\"text\": \"x\", \"whole\": 1000000, \"number\": 0.5, \"switch\": true, "
              "\"known\": 3, \"unknown\": null}\n");
}
