#include "workbench/cli/serve/LineReader.h"

#include <gtest/gtest.h>

#include <fstream>

using workbench::LineReader;

namespace {

/// The lines of a file with this text, each in brackets; "…" where it goes on behind them.
std::string linesOf(const std::string& text, std::uintmax_t most, std::size_t longest) {
    const std::filesystem::path file = std::filesystem::path(TEST_FOLDER) / "lines.txt";
    std::ofstream(file, std::ios::binary) << text;
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
    const std::filesystem::path file = std::filesystem::path(TEST_FOLDER) / "places.txt";
    std::ofstream(file, std::ios::binary) << "a\nbc\nd";
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
