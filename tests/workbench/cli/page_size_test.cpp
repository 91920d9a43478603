#include "workbench/cli/page_size.h"

#include <gtest/gtest.h>

using workbench::PageSize;
using workbench::pageSize;

TEST(PageSize, ATerminalHasItsWidth) {
    const PageSize page = pageSize(132, std::nullopt);
    EXPECT_EQ(page.columns, 132U);
    EXPECT_EQ(page.rows, 40U);
    EXPECT_EQ(page.cellWidth, 40U);
}

TEST(PageSize, WhatTheUserAsksForTakesThePlaceOfTheTerminalsWidth) {
    EXPECT_EQ(pageSize(132, 60).columns, 60U);
    EXPECT_EQ(pageSize(132, 60).rows, 40U);
}

TEST(PageSize, NothingIsCutWhereThereIsNoTerminal) {
    const PageSize page = pageSize(std::nullopt, std::nullopt);
    EXPECT_EQ(page.columns, workbench::unlimited);
    EXPECT_EQ(page.rows, workbench::unlimited);
    EXPECT_EQ(page.cellWidth, workbench::unlimited);
}

TEST(PageSize, WithoutATerminalTheWidthIsStillWhatTheUserAsksFor) {
    const PageSize page = pageSize(std::nullopt, 60);
    EXPECT_EQ(page.columns, 60U);
    EXPECT_EQ(page.rows, workbench::unlimited);
}
