// The rows and cells of tables.

#include "tests/platform/html/HtmlTest.h"

namespace intake {
namespace {

using HtmlRowsOf = HtmlTest;

TEST_F(HtmlRowsOf, AHeadComeFirstAndThoseOfAFootLastWhereverTheyStand) {
    load(
        "<table><tfoot><tr><td>sum</tfoot>"
        "<tbody><tr><td>1</tbody>"
        "<thead><tr><th>name</thead>"
        "<tbody><tr><td>2<tr><td>3</tbody></table>");
    EXPECT_EQ(table(), "name|\n1|\n2|\n3|\nsum|\n");
}

TEST_F(HtmlRowsOf, ATableWithoutSectionsComeInOrder) {
    load("<table><tr><td>1</td></tr><tr><td>2</td></tr></table>");
    EXPECT_EQ(table(), "1|\n2|\n");
}

TEST_F(HtmlRowsOf, ATableHaveHeaderAndDataCellsAlike) {
    load("<table><tr><th>a</th><td>b</td><th>c</th></tr></table>");
    EXPECT_EQ(table(), "a|b|c|\n");
}

TEST_F(HtmlRowsOf, ATableMayDifferInLength) {
    load("<table><tr><td>1<td>2<td>3<tr><td>4<tr><tr><td>5<td>6</table>");
    EXPECT_EQ(table(), "1|2|3|\n4|\n\n5|6|\n");
}

TEST_F(HtmlRowsOf, ATableHaveTheirCellsAsTheyStandWhateverTheySpan) {
    load("<table><tr><td colspan=2>a<td>b<tr><td rowspan=2>c<td>d<td>e<tr><td>f</table>");
    EXPECT_EQ(table(), "a|b|\nc|d|e|\nf|\n");
}

TEST_F(HtmlRowsOf, ATableAreNotThoseOfTablesInItsCells) {
    load("<table id=outer><tr><td>1<table id=inner><tr><td>x<td>y</table><td>2<tr><td>3</table>");
    const auto outer = document_->table(document_->elementById("outer"));
    EXPECT_EQ(outer->rowCount(), 2U);
    EXPECT_EQ(outer->cellCount(0), 2U);
    EXPECT_EQ(table(document_->elementById("inner")), "x|y|\n");
}

TEST_F(HtmlRowsOf, ATableIncludeThoseWithoutTags) {
    load("<table><td>a<td>b<tbody><td>c</table>");
    EXPECT_EQ(table(), "a|b|\nc|\n");
}

TEST_F(HtmlRowsOf, ATableWithoutAnyAreNone) {
    load("<table></table>");
    EXPECT_EQ(table(), "");
    load("<table><caption>c</caption><colgroup><col></colgroup><tbody></tbody></table>");
    EXPECT_EQ(table(), "");
}

TEST_F(HtmlRowsOf, BadlyBrokenMarkupAreThoseThatBrowsersShow) {
    load("<table><tr><td>a</tr></td><td>b</div><td>c<b></td><td>d</b></table><td>e");
    EXPECT_EQ(table(), "a|\nb|c|d|\n");
    load("<table><tr>stray<td>a<form><td>b</form><p>c</table>");
    EXPECT_EQ(table(), "a|b\r\n\r\nc|\n");
    load("<table <tr><td>a<tr><td class='x>b</table>");
    EXPECT_EQ(table(), "a|\n\n");
    load("<table><tr><td>a<table><tr><td>b");
    EXPECT_EQ(table(), "a\r\nb|\n");
}

TEST_F(HtmlRowsOf, ATableAreReadInAnyOrder) {
    load("<table><tr><td>1<td>2<tr><td>3<td>4</table>");
    const auto table = document_->table(document_->firstTable(nullptr));
    std::string text = "kept ";
    table->appendCellText(1, 1, text);
    table->appendCellText(0, 0, text);
    table->appendCellText(1, 1, text);
    EXPECT_EQ(text, "kept 414");
}

TEST_F(HtmlRowsOf, ATableGiveKeysByTheSystemsConversion) {
    load("<meta charset=utf-8><table><tr><td> key </table>");
    std::string key;
    document_->table(document_->firstTable(nullptr))->appendCellKey(0, 0, key);
    EXPECT_EQ(key, "key");
}

}  // namespace
}  // namespace intake
