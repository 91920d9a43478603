#include "workbench/cli/serve/LineReader.h"

#include <gtest/gtest.h>

#include "tests/support/TempDirectory.h"

using workbench::LineReader;

namespace {

/// The lines of a file with this text, each in brackets; "…" where it goes on behind them.
std::string linesOf(const std::string& text, std::uintmax_t most, std::size_t longest) {
    const intake::TempDirectory folder;
    const std::filesystem::path file = folder.write("lines.txt", text);
    LineReader reader(file, most, longest);
    std::string lines;
    for (std::string line; reader.next(line);)
        lines += "[" + line + "]";
    return lines + (reader.isCut() ? "…" : "");
}

}  // namespace

TEST(LineReader, ReadsLinesWithTheLastOneWithoutAnEnd) {
    EXPECT_EQ(linesOf("a\n\nbc", 100, 10), "[a][][bc]");
    EXPECT_EQ(linesOf("", 100, 10), "");
}

TEST(LineReader, KeepsOnlyTheStartOfALongLine) {
    EXPECT_EQ(linesOf("abcdef\ng\n", 100, 3), "[abcd][g]");
    EXPECT_EQ(linesOf(std::string(200'000, 'x') + "\ny", 1'000'000, 2), "[xxx][y]");
}

TEST(LineReader, ReadsNoMoreThanItMay) {
    EXPECT_EQ(linesOf("ab\ncd\n", 4, 10), "[ab][c]…");
    EXPECT_EQ(linesOf("ab\ncd\n", 6, 10), "[ab][cd]");
}

TEST(LineReader, GoesToAPlaceThatItHasToldOf) {
    const intake::TempDirectory folder;
    const std::filesystem::path file = folder.write("places.txt", "a\nbc\nd");
    LineReader reader(file, 100, 10);
    std::string line;
    reader.next(line);
    const auto second = reader.place();
    EXPECT_EQ(second, 2U);
    while (reader.next(line)) {
    }
    EXPECT_EQ(reader.place(), 6U);
    reader.seek(second);
    EXPECT_TRUE(reader.next(line));
    EXPECT_EQ(line, "bc");
}

TEST(LineReader, CountsOnFromThePlaceThatItGoesTo) {
    const intake::TempDirectory folder;
    const std::filesystem::path file = folder.write("places.txt", "a\nbc\nd");
    LineReader reader(file, 100, 10);
    std::string line;
    reader.next(line);
    reader.seek(2);
    EXPECT_TRUE(reader.next(line));
    EXPECT_EQ(line, "bc");
    EXPECT_EQ(reader.place(), 5U);
    reader.seek(0);
    EXPECT_TRUE(reader.next(line));
    EXPECT_EQ(line, "a");
    EXPECT_EQ(reader.place(), 2U);
}
