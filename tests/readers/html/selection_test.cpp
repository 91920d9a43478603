// Finding a table in pages parsed by the system.

#include <gtest/gtest.h>

#include "tests/readers/html/read.h"

namespace intake {
namespace {

/// The cells of the table that a selector chooses, one for each row, or the failure.
std::string chosen(const std::string& page, const std::string& selector) {
    return fileScript(page, {.selector = selector, .mode = SHARED_MEMORY, .key = "k"});
}

constexpr auto PAGE = R"(<!DOCTYPE html>
<html><head><title>Markets</title></head><body>
<table id="menu" class="nav"><tr><td>k<tr><td>menu</table>
<div id="indices" class="box wide">
  <h2>Indices</h2>
  <table class="grid"><tr><td>k<tr><td>indices</table>
</div>
<div class="box wide">
  <h2>Closing prices 2024</h2>
  <table><tr><td>k<tr><td>old</table>
</div>
<section>
  <div><h2> Closing <em>prices</em> </h2></div>
  <div><table id="closing" class="grid"><tr><td>k<tr><td>closing</table></div>
</section>
<div id="none"><p>No table here</p></div>
</body></html>
)";

TEST(HtmlSelector, LeftEmptyTakesTheFirstTable) {
    EXPECT_EQ(chosen(PAGE, ""), "k|menu");
    EXPECT_EQ(chosen("<p>no table", ""), "failed: HTML: Could not find any TABLE");
    EXPECT_EQ(chosen("", ""), "failed: HTML: Could not find any TABLE");
}

TEST(HtmlSelector, FindsATableByItsIdOrThatOfAnElementAround) {
    EXPECT_EQ(chosen(PAGE, "ID closing"), "k|closing");
    EXPECT_EQ(chosen(PAGE, "ID indices"), "k|indices");
    EXPECT_EQ(chosen(PAGE, "ID none"), "failed: HTML: Could not find any TABLE under ID \"none\"");
    EXPECT_EQ(chosen(PAGE, "ID prices"),
              "failed: HTML: Could not find any TABLE under ID \"prices\"");
}

TEST(HtmlSelector, FindsATableByTheWholeClassOfTheFirstElementThatHasIt) {
    EXPECT_EQ(chosen(PAGE, "CLASS box wide"), "k|indices");
    EXPECT_EQ(chosen(PAGE, "CLASS grid"), "k|indices");
    EXPECT_EQ(chosen(PAGE, "CLASS nav"), "k|menu");
    EXPECT_EQ(chosen(PAGE, "CLASS box"),
              "failed: HTML: Could not find any TABLE under CLASS \"box\"");
}

TEST(HtmlSelector, FindsTheTableNearestToAText) {
    EXPECT_EQ(chosen(PAGE, "TEXT Closing prices"), "k|closing");
    EXPECT_EQ(chosen(PAGE, "NEAR Closing prices 2024"), "k|old");
    EXPECT_EQ(chosen(PAGE, "TEXT Indices"), "k|indices");
    EXPECT_EQ(chosen(PAGE, "TEXT No table here"), "k|menu");
    EXPECT_EQ(chosen(PAGE, "TEXT Closing"),
              "failed: HTML: Could not find any TABLE close to text \"Closing\"");
    EXPECT_EQ(chosen(PAGE, "TEXT closing prices"),
              "failed: HTML: Could not find any TABLE close to text \"closing prices\"");
}

TEST(HtmlSelector, TakesTheFirstTableOfWhateverIsAroundATextInACell) {
    EXPECT_EQ(chosen(PAGE, "TEXT closing"), "k|closing");
    EXPECT_EQ(chosen("<table><tr><td>k<tr><td>one</table><table><tr><td>k<tr><td>two</table>",
                     "TEXT two"),
              "k|one");
}

TEST(HtmlSelector, OfAKindWordAloneLooksForAnElementWithoutText) {
    EXPECT_EQ(chosen(PAGE, "Indices"), "k|menu");
    EXPECT_EQ(chosen("<p>x<div><p></p><table><tr><td>k<tr><td>near</table></div>", "TEXT"),
              "k|near");
}

TEST(HtmlSelector, FindsTheTextOfTheTitle) {
    EXPECT_EQ(chosen(PAGE, "TEXT Markets"), "k|menu");
}

TEST(HtmlSelector, TakesNestedTablesAsTheyCome) {
    constexpr auto NESTED =
        "<table id=a><tr><td>k<tr><td><table id=b><tr><td>k<tr><td>in</table></table>";
    EXPECT_EQ(chosen(NESTED, "ID b"), "k|in");
    EXPECT_EQ(chosen(NESTED, "ID a"), "k|k\r\nin");
}

TEST(HtmlSelector, AndNamesAreInTheEncodingOfTheRequest) {
    constexpr auto FRENCH =
        "<meta charset=utf-8><h2>R\xC3\xA9sultats</h2><table><tr><th>\xC3\x89quipe<th>\xE2\x82\xAC"
        "<tr><td>\xC3\x89toile<td>\xE2\x82\xAC 1</table>";
    EXPECT_EQ(fileScriptAlone(FRENCH, {.selector = "TEXT R\xE9sultats",
                                       .mode = DATA_TABLE,
                                       .key = "\xC9quipe",
                                       .fromRow = 1,
                                       .encoding = 2}),
              "T[\xC3\x89toile]={{\xC9quipe=\"\"\xC9toile\"\";?=\"\"? 1\"\";};};");
    EXPECT_EQ(
        fileScript(FRENCH, {.selector = "TEXT R\xC3\xA9sultats", .mode = DATA_ARRAY, .fromRow = 1}),
        "T[0]={{\xC3\x89quipe=\"\"\xC3\x89toile\"\";\xE2\x82\xAC=\"\"\xE2\x82\xAC 1\"\";};};"
        "READER_NUM_RECORDS=1;");
}

}  // namespace
}  // namespace intake
