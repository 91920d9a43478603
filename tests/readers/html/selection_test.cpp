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

TEST(HtmlSelector, WithoutATextTakesTheFirstElementThatIsEmptyAndSoMostOftenTheFirstTable) {
    EXPECT_EQ(chosen(PAGE, "TEXT"), "k|menu");
    EXPECT_EQ(chosen(PAGE, "Indices"), "k|menu");
    EXPECT_EQ(chosen(PAGE, "id"), "k|menu");
    EXPECT_EQ(chosen(PAGE, "CLASS"), "k|menu");
    EXPECT_EQ(chosen(PAGE, "CLASS \t"), "k|menu");
    EXPECT_EQ(chosen(PAGE, "ID"), "failed: HTML: Could not find any TABLE under ID \"\"");
    EXPECT_EQ(chosen("<p>no table", "Prices"),
              "failed: HTML: Could not find any TABLE close to text \"\"");
}

TEST(HtmlSelector, FindsTheOuterOfNestedElementsOfOneClass) {
    constexpr auto NESTED =
        "<div class=x><table><tr><td>k<tr><td>outer</table>"
        "<div class=x><table><tr><td>k<tr><td>inner</table></div></div>";
    EXPECT_EQ(chosen(NESTED, "CLASS x"), "k|outer");
    constexpr auto TABLES =
        "<table class=x><tr><td>k<tr><td><table class=x><tr><td>k<tr><td>in</table></table>";
    EXPECT_EQ(chosen(TABLES, "CLASS x"), "k|in");
}

TEST(HtmlSelector, FindsTablesOfBrokenPagesWhereBrowsersPutThem) {
    constexpr auto UNCLOSED = "<table id=a><tr><td>k<tr><td><table id=b><tr><td>k<tr><td>in";
    EXPECT_EQ(chosen(UNCLOSED, "ID b"), "k|in");
    EXPECT_EQ(chosen(UNCLOSED, "ID a"), "k|k\r\nin");
    constexpr auto BETWEEN_ROWS =
        "<div id=d><table id=a><tr><td>k<tr><table id=b><tr><td>k<tr><td>next</table></div>";
    EXPECT_EQ(chosen(BETWEEN_ROWS, "ID b"), "k|next");
    EXPECT_EQ(chosen(BETWEEN_ROWS, "ID a"), "k|");
    EXPECT_EQ(chosen(BETWEEN_ROWS, "ID d"), "k|");
    constexpr auto HEADING_INSIDE =
        "<table id=a><tr><td>k</table><table id=b><h2>Prices</h2><tr><td>k<tr><td>x</table>";
    EXPECT_EQ(chosen(HEADING_INSIDE, "ID b"), "k|x");
    EXPECT_EQ(chosen(HEADING_INSIDE, "TEXT Prices"), "k");
}

TEST(HtmlSelector, TellsNoBreakSpacesFromBlanks) {
    constexpr auto HEADING = "<table><tr><td>k</table><h2>Closing&nbsp;prices</h2>";
    EXPECT_EQ(chosen(HEADING, "TEXT Closing\xC2\xA0prices"), "k");
    EXPECT_EQ(chosen(HEADING, "TEXT Closing prices"),
              "failed: HTML: Could not find any TABLE close to text \"Closing prices\"");
}

TEST(HtmlSelector, IsItsFirstLine) {
    EXPECT_EQ(chosen(PAGE, "ID closing\r\nmenu"), "k|closing");
    EXPECT_EQ(chosen(PAGE, "TEXT Closing prices\r\n"), "k|closing");
}

TEST(HtmlSelector, FindsNoHeadingOfSeveralLinesNorOneThatEndsInABr) {
    EXPECT_EQ(
        chosen("<table><tr><td>k</table><h2>Closing<br>prices</h2>", "TEXT Closing\r\nprices"),
        "failed: HTML: Could not find any TABLE close to text \"Closing\"");
    EXPECT_EQ(chosen("<table><tr><td>k</table><h2>Prices<br></h2>", "TEXT Prices"),
              "failed: HTML: Could not find any TABLE close to text \"Prices\"");
}

TEST(HtmlSelector, FindsATextThatIsThereBesidesWhatIsNotShown) {
    EXPECT_EQ(chosen("<table><tr><td>k<tr><td>1</table><section><h2><svg><title>Up</title></svg>"
                     "Prices<span style='visibility:hidden'>9</span></h2>"
                     "<table><tr><td>k<tr><td>2</table></section>",
                     "TEXT Prices"),
              "k|2");
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
