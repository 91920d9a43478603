#include "workbench/cli/run/ScreenBlock.h"

#include <gtest/gtest.h>

#include "tests/workbench/cli/TerminalModel.h"

namespace workbench {
namespace {

struct Block : testing::Test {
    std::string update(const std::vector<std::string>& lines, const std::string& above = "") {
        const std::string written = block.update(lines, above);
        terminal.write(written);
        return written;
    }

    TerminalModel terminal{20, 6};
    ScreenBlock block;
};

TEST_F(Block, StaysInItsPlace) {
    terminal.write("$ run\r\n");
    update({"a 1", "b 1", "c 1"});
    update({"a 1", "b 22", "c 1"});
    update({"a 3", "b 2", "c 4"});
    EXPECT_EQ(terminal.text(), "$ run\na 3\nb 2\nc 4");
    EXPECT_EQ(terminal.scrolledLines(), 0U);
}

TEST_F(Block, IsWrittenOnlyWhereItHasChanged) {
    update({"a 1", "b 1", "c 1"});
    EXPECT_EQ(update({"a 1", "b 1", "c 1"}), "");
    EXPECT_EQ(update({"a 1", "b 2", "c 1"}), "\x1b[2Ab 2\x1b[K\r\x1b[2B");
}

TEST_F(Block, WhatIsPrintedMeanwhileScrollsAwayAboveIt) {
    update({"a 1", "b 1"});
    update({"a 1", "b 1"}, "first\n");
    update({"a 2", "b 1"}, "second\nthird\nfourth\n");
    update({"a 3", "b 1"}, "fifth\n");
    EXPECT_EQ(terminal.text(), "first\nsecond\nthird\nfourth\nfifth\na 3\nb 1");
}

TEST_F(Block, GrowsAndShrinks) {
    update({"a"});
    update({"a", "b", "c"});
    EXPECT_EQ(terminal.text(), "a\nb\nc");
    update({"b"});
    EXPECT_EQ(terminal.text(), "b");
}

TEST_F(Block, IsThereOnceAfterTheTerminalWasCleared) {
    update({"a 1", "b 1"});
    terminal.resize(10, 3);
    terminal.write(block.clear());
    update({"a 1", "b 1"});
    EXPECT_EQ(terminal.text(), "a 1\nb 1");
}

}  // namespace
}  // namespace workbench
