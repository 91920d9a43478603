// The inner text of cells.

#include "tests/platform/html/HtmlTest.h"

namespace intake {
namespace {

using HtmlText = HtmlTest;

TEST_F(HtmlText, HasItsWhiteSpaceCollapsedAndItsEndsTrimmed) {
    EXPECT_EQ(cellOf("  two \t\r\n  words  "), "two words");
    EXPECT_EQ(cellOf(" <b> a </b> <i> b </i> "), "a b");
    EXPECT_EQ(cellOf("a<b>b</b>c"), "abc");
    EXPECT_EQ(cellOf(""), "");
    EXPECT_EQ(cellOf(" \n "), "");
}

TEST_F(HtmlText, KeepsNoBreakSpacesButForThoseAtItsEnds) {
    EXPECT_EQ(cellOf("&nbsp;"), "");
    EXPECT_EQ(cellOf("a&nbsp;&nbsp;b"),
              "a\xC2\xA0\xC2\xA0"
              "b");
    EXPECT_EQ(cellOf("&nbsp;a &nbsp;"), "a");
}

TEST_F(HtmlText, BreaksItsLinesAtBrAndBlocks) {
    EXPECT_EQ(cellOf("a<br>b"), "a\r\nb");
    EXPECT_EQ(cellOf("a <br> b<br/>c</br>d"), "a\r\nb\r\nc\r\nd");
    EXPECT_EQ(cellOf("a<div>b</div>c"), "a\r\nb\r\nc");
    EXPECT_EQ(cellOf("<div><div>a</div></div><div>b</div>"), "a\r\nb");
    EXPECT_EQ(cellOf("<p>a</p><p>b</p>"), "a\r\n\r\nb");
    EXPECT_EQ(cellOf("<h3>a</h3>b<ul><li>c<li>d</ul>"), "a\r\nb\r\nc\r\nd");
    EXPECT_EQ(cellOf("a<span>b</span><a>c</a>"), "abc");
    EXPECT_EQ(cellOf("a<br><br>b"), "a\r\n\r\nb");
}

TEST_F(HtmlText, OfATableInsideSeparatesCellsByTabsAndRowsByLineEnds) {
    EXPECT_EQ(cellOf("<table><tr><td>1</td> <td>2</td></tr><tr><td>3</td></tr></table>"),
              "1\t2\r\n3");
    EXPECT_EQ(cellOf("a<table><caption>c</caption><tr><td>1</table>b"), "a\r\nc\r\n1\r\nb");
}

TEST_F(HtmlText, LeavesOutWhatIsNotRendered) {
    EXPECT_EQ(cellOf("a<script>document.write('x')</script><style>b{}</style>b<!-- c -->"), "ab");
    EXPECT_EQ(cellOf("a<template>x</template><iframe>y</iframe><noembed>z</noembed>"), "a");
    EXPECT_EQ(
        cellOf("a<span hidden>x</span><b style='color: red; DISPLAY : none !important'>y</b>"),
        "a");
    EXPECT_EQ(cellOf("a<span style='display:inline'>b</span><i style='color:none'>c</i>"), "abc");
    EXPECT_EQ(cellOf("<span hidden><div>x</div><b>y</b></span>a"), "a");
}

TEST_F(HtmlText, OfNoscriptCountsForNoScriptRuns) {
    EXPECT_EQ(cellOf("<noscript>12</noscript>"), "12");
}

TEST_F(HtmlText, KeepsTheWhiteSpaceOfPre) {
    EXPECT_EQ(cellOf("<pre>\na  b\n\tc</pre>d"), "a  b\r\n\tc\r\nd");
}

TEST_F(HtmlText, HasItsReferencesReplaced) {
    EXPECT_EQ(cellOf("&lt;b&gt; &amp; &quot;x&quot; &eacute;&#233;&#xE9;"),
              "<b> & \"x\" \xC3\xA9\xC3\xA9\xC3\xA9");
    EXPECT_EQ(cellOf("&euro;&#8364;&#x80;&#128;"),
              "\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC");
    EXPECT_EQ(cellOf("&ampx &copy2 AT&T &nosuch; &#0; &#x110000; &#; &"),
              "&x \xC2\xA9"
              "2 AT&T &nosuch; \xEF\xBF\xBD \xEF\xBF\xBD &#; &");
    EXPECT_EQ(cellOf("&#xD800;&#xDFFF;&#xE000;"), "\xEF\xBF\xBD\xEF\xBF\xBD\xEE\x80\x80");
    EXPECT_EQ(cellOf("&notin;&notit;"), "\xE2\x88\x89\xC2\xACit;");
}

TEST_F(HtmlText, OfOptionsIsThere) {
    EXPECT_EQ(cellOf("<select><option>a<option>b</select>"), "a\r\nb");
    EXPECT_EQ(cellOf("<select>x<optgroup label=y>z<option>a<option>b</optgroup></select>"),
              "a\r\nb");
}

TEST_F(HtmlText, LeavesOutWhatStandsInPlaceOfMediaAndWhatFieldsHold) {
    for (const char* name :
         {"audio", "canvas", "meter", "object", "progress", "textarea", "video"}) {
        const std::string tag = name;
        EXPECT_EQ(cellOf("1<" + tag + ">x</" + tag + ">2"), "12") << name;
    }
    EXPECT_EQ(cellOf("<object><table><tr><td>x</table></object>1"), "1");
}

TEST_F(HtmlText, OfATextareaCountsWhereItIsAskedForWithItsWhiteSpace) {
    load("<textarea id=t>a  <b>\nc</textarea>");
    EXPECT_TRUE(document_->innerTextEquals(document_->elementById("t"), "a  <b>\r\nc"));
}

TEST_F(HtmlText, OfSvgIsThatOfItsTextElements) {
    EXPECT_EQ(cellOf("<svg><title>Up</title><desc>An arrow</desc><metadata>m</metadata>"
                     "<style>.a{fill:red}</style><script>s</script>"
                     "<defs><text>d</text></defs><symbol><text>s</text></symbol>"
                     "<clipPath><text>c</text></clipPath><path d='M0 0'><title>p</title></path>"
                     "</svg>12"),
              "12");
    EXPECT_EQ(cellOf("a<svg>x <g> y <stop>z</stop></g> </svg>b"), "ab");
    EXPECT_EQ(cellOf("<svg><g><text> 4<tspan>2</tspan><a>0</a> </text></g></svg>"), "420");
    EXPECT_EQ(cellOf("<svg><text><title>x</title><textPath>7</textPath></text></svg>"), "7");
    EXPECT_EQ(cellOf("<svg><foreignObject>a<b>b</b><script>x</script></foreignObject></svg>"),
              "ab");
    EXPECT_EQ(cellOf("<svg><text style='display:none'>x</text></svg>1"), "1");
}

TEST_F(HtmlText, OfMathLeavesItsAnnotationsOut) {
    EXPECT_EQ(cellOf("<math><semantics><mrow><mi>x</mi><mo>+</mo><mn>1</mn></mrow>"
                     "<annotation>x + 1</annotation></semantics></math>"),
              "x+1");
}

TEST_F(HtmlText, OfClosedDetailsIsTheirSummary) {
    EXPECT_EQ(cellOf("<details>x<summary>a</summary>y<p>z</p></details>b"), "a\r\nb");
    EXPECT_EQ(cellOf("<details><p>x</p><summary>a</summary><summary>y</summary></details>"), "a");
    EXPECT_EQ(cellOf("<details><div><summary>x</summary></div></details>b"), "b");
    EXPECT_EQ(cellOf("<details open><summary>a</summary>b</details>c"), "a\r\nb\r\nc");
}

TEST_F(HtmlText, OfClosedDialogsIsNotThere) {
    EXPECT_EQ(cellOf("<dialog>x<p>y</p></dialog>a"), "a");
    EXPECT_EQ(cellOf("<dialog open>a</dialog>b"), "a\r\nb");
}

TEST_F(HtmlText, LeavesOutWhatIsNotVisible) {
    EXPECT_EQ(cellOf("<span style='visibility:hidden'>00</span>7"), "7");
    EXPECT_EQ(cellOf("<span style='Visibility : Collapse ! important'>00</span>7"), "7");
    EXPECT_EQ(cellOf("a <span style='visibility:hidden'> x <b>y</b><br></span> b"), "a b");
    EXPECT_EQ(cellOf("<p>a</p><p style='visibility:hidden'>x</p><p>b</p>"), "a\r\n\r\nb");
    EXPECT_EQ(cellOf("<i style='visibility:visible'>a</i><i style='visibility:inherit'>b</i>"),
              "ab");
}

TEST_F(HtmlText, HasWhatIsVisibleAgainInsideOfWhatIsNot) {
    EXPECT_EQ(cellOf("<div style='visibility:hidden'>x<b style='visibility:visible'>a"
                     "<i style='visibility:hidden'>y</i>b</b>z</div>c"),
              "abc");
    EXPECT_EQ(cellOf("<div style='visibility:hidden'>x<b style='visibility:initial'>a</b></div>"),
              "a");
}

TEST_F(HtmlText, TakesTheVisibilityFromTheElementsAround) {
    load(
        "<table style='visibility:visible'><tr style='visibility:hidden'><td>x"
        "<td style='visibility:visible'>a<td style='visibility:hidden'>y<tr><td>b</table>");
    EXPECT_EQ(table(), "|a||\nb|\n");
}

TEST_F(HtmlText, FollowsTheLastDeclarationOfAStyle) {
    EXPECT_EQ(cellOf("a<b style='display:none; display:inline'>b</b>"), "ab");
    EXPECT_EQ(cellOf("a<b style='display:block;display:none;'>b</b>"), "a");
    EXPECT_EQ(cellOf("a<b style='visibility:hidden;visibility:visible'>b</b>"), "ab");
    EXPECT_EQ(cellOf("a<b style='display'>b</b><b style=';:none;display:'>c</b>"), "abc");
}

TEST_F(HtmlText, FollowsAnImportantDeclarationBeforeALaterOne) {
    EXPECT_EQ(cellOf("a<b style='display:none!important;display:inline'>b</b>"), "a");
    EXPECT_EQ(cellOf("a<b style='display:none !important;display:inline ! important'>b</b>"), "ab");
    EXPECT_EQ(cellOf("a<b style='display:inline!important;display:none'>b</b>"), "ab");
}

TEST_F(HtmlText, OverlooksTheCommentsOfAStyle) {
    EXPECT_EQ(cellOf("a<b style='/*c*/display:none'>b</b>"), "a");
    EXPECT_EQ(cellOf("a<b style='/* ; */display/**/:/*x*/none/*y'>b</b>"), "a");
    EXPECT_EQ(cellOf("a<b style='/*display:none'>b</b>"), "ab");
    EXPECT_EQ(cellOf("a<b style='display:n/**/one'>b</b>"), "ab");
}

TEST_F(HtmlText, LeavesOutPopovers) {
    EXPECT_EQ(cellOf("a<span popover>x</span><span popover=manual>y</span>b"), "ab");
}

TEST_F(HtmlText, HasWhatIsHiddenByAnAttributeWhereTheStyleShowsIt) {
    EXPECT_EQ(cellOf("<i hidden style='display:inline'>a</i><i style='color:red' hidden>x</i>"),
              "a");
    EXPECT_EQ(cellOf("<i popover style='display:block'>a</i>"), "a");
}

TEST_F(HtmlText, OfRowsAndCellsThatAreHiddenThemselvesIsThere) {
    load("<table><tr hidden><td>1<tr><td style='display:none'>2<td>3</table>");
    EXPECT_EQ(table(), "1|\n2|3|\n");
}

TEST_F(HtmlText, TakesPicturesFieldsAndButtonsForNothing) {
    EXPECT_EQ(cellOf("<img src=flag> Holm <input> (<button>N</button>)"), "Holm (N)");
}

TEST_F(HtmlText, LeavesOutFormsBetweenTheCellsOfATable) {
    EXPECT_EQ(cellOf("<table><tr><td>1</td><form><td>2</td></form><td>3</td></tr></table>"),
              "1\t2\t3");
    EXPECT_EQ(cellOf("<table><form><tr><td>1</td></tr></form></table>"), "1");
    EXPECT_EQ(cellOf("a<form>b</form>"), "a\r\nb");
}

TEST_F(HtmlText, InsideOfPreKeepsItsWhiteSpaceWhereverItIsAskedFor) {
    load("<pre id=p>a\n<b id=b>x  y\nz</b><pre>q</pre><i id=i>1  2</i></pre>");
    EXPECT_TRUE(document_->innerTextEquals(document_->elementById("b"), "x  y\r\nz"));
    EXPECT_TRUE(document_->innerTextEquals(document_->elementById("i"), "1  2"));
    EXPECT_TRUE(
        document_->innerTextEquals(document_->elementById("p"), "a\r\nx  y\r\nz\r\nq\r\n1  2"));
}

TEST_F(HtmlText, EndsWithTheLineBreakOfABrAtItsEnd) {
    load("<h2 id=h>Closing prices<br></h2>");
    EXPECT_TRUE(document_->innerTextEquals(document_->elementById("h"), "Closing prices\r\n"));
    EXPECT_FALSE(document_->innerTextEquals(document_->elementById("h"), "Closing prices"));
    EXPECT_EQ(cellOf("12<br>"), "12");
}

TEST_F(HtmlText, IsComparedAsAWhole) {
    load("<!DOCTYPE html><body><p id=p> Closing \n<b>prices</b> <p id=q>a<br>b<p id=e></p>");
    const Element p = document_->elementById("p");
    EXPECT_TRUE(document_->innerTextEquals(p, "Closing prices"));
    for (const char* other : {"", "Closing", "Closing prices ", "Closing prices 2024",
                              "closing prices", " Closing prices", "Closing  prices"}) {
        EXPECT_FALSE(document_->innerTextEquals(p, other)) << other;
    }
    EXPECT_TRUE(document_->innerTextEquals(document_->elementById("q"), "a\r\nb"));
    EXPECT_TRUE(document_->innerTextEquals(document_->elementById("e"), ""));
}

TEST_F(HtmlText, OfWhatIsNotRenderedCountsWhereItIsAskedFor) {
    load("<title> Prices </title><p id=p hidden>x</p>");
    EXPECT_TRUE(document_->innerTextEquals(document_->elementById("p"), "x"));
    const Element found = document_->findElement(
        [&](Element each) { return document_->innerTextEquals(each, "Prices"); });
    EXPECT_NE(found, nullptr);
}

}  // namespace
}  // namespace intake
