#include "workbench/probe/PageTables.h"

#include <gtest/gtest.h>

#include "formats/html/page_encoding.h"

namespace probe {

namespace {

std::unique_ptr<intake::html::Page> pageOf(const std::string& text) {
    const intake::EndMark never;
    return intake::html::parsePage(intake::html::decodePage(text, ""), never);
}

TEST(PageTables, SelectsEachOfManyTablesByItsId) {
    constexpr std::size_t count = 10'000;
    std::string text = "<!DOCTYPE html>";
    for (std::size_t i = 0; i < count; ++i)
        text += "<h2>Heat</h2><table id=t" + std::to_string(i) + "><tr><td>1</table>";
    const auto page = pageOf(text);
    PageTables tables(*page);
    ASSERT_EQ(tables.all().size(), count);
    for (std::size_t i = 0; i < count; ++i)
        EXPECT_EQ(tables.selectorFor(*tables.all()[i]), "ID t" + std::to_string(i));
    EXPECT_EQ(tables.headingOf(*tables.all().back()), "Heat");
}

TEST(PageTables, TakesTheFirstElementOfAnIdOrAClass) {
    const auto page =
        pageOf("<!DOCTYPE html><p id=a></p><table id=a class=c></table><table class=c></table>");
    PageTables tables(*page);
    EXPECT_EQ(tables.find(htmlSelector("ID a")).table, nullptr);
    EXPECT_EQ(tables.find(htmlSelector("ID")).table, nullptr);
    EXPECT_EQ(tables.find(htmlSelector("CLASS c")).table, tables.all().front());
    EXPECT_EQ(tables.selectorFor(*tables.all().back()), "");
}

}  // namespace

}  // namespace probe
