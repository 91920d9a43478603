#include "workbench/probe/PageTables.h"

#include <gtest/gtest.h>

#include <random>

#include "formats/html/inner_text.h"
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

/// A page of words in all kinds of elements, some of them hidden.
std::string pageAtRandom(std::mt19937& draw) {
    const std::vector<std::string> pieces{"<div>",
                                          "</div>",
                                          "<p>",
                                          "</p>",
                                          "<b>",
                                          "</b>",
                                          "<table>",
                                          "<tr>",
                                          "<td>",
                                          "<th>",
                                          "</tr>",
                                          "</table>",
                                          "<pre>",
                                          "</pre>",
                                          "<i hidden>",
                                          "</i>",
                                          "<span style='visibility:hidden'>",
                                          "</span>",
                                          "<br>",
                                          "one",
                                          "two ",
                                          " three",
                                          "\n  ",
                                          "one  two",
                                          "<!-- -->",
                                          "&nbsp;",
                                          "<h2>",
                                          "</h2>",
                                          "<script>one</script>"};
    std::string text = "<!DOCTYPE html><title>t</title>";
    for (int i = 0; i < 40; ++i)
        text += pieces[draw() % pieces.size()];
    return text;
}

TEST(PageTables, FindsTheFirstElementOfAText) {
    std::mt19937 draw(28);
    uint32_t search = 1'000'000;  // unlike those of the tables
    for (int i = 0; i < 500; ++i) {
        const std::string text = pageAtRandom(draw);
        const auto page = pageOf(text);
        PageTables tables(*page);
        for (const std::string wanted :
             {"one", "two", "three", "one two", "two three", "one\ttwo", "onetwo", "one  two"}) {
            const intake::html::SearchedText searched{wanted, ++search};
            const intake::html::Node* first = page->document.following(&page->document);
            while (first != nullptr && !(first->type == intake::html::NodeType::ELEMENT &&
                                         innerTextEquals(*first, searched)))
                first = first->following(&page->document);
            EXPECT_EQ(tables.find(htmlSelector("TEXT " + wanted)).element, first)
                << wanted << ": " << text;
        }
    }
}

TEST(PageTables, PrefersWhatHoldsNoOtherTable) {
    const auto page = pageOf(
        "<!DOCTYPE html><div id=all><div class=heats><table class=t></table></div>"
        "<table class=t></table></div>");
    PageTables tables(*page);
    EXPECT_EQ(tables.selectorsFor(*tables.all().front()),
              (std::vector<std::string>{"CLASS heats", "CLASS t", "ID all", ""}));
}

}  // namespace

}  // namespace probe
