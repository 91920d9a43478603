// The trees that our parser builds of markup that is broken in common ways; what browsers build.

#include <gtest/gtest.h>

#include "formats/html/Page.h"
#include "formats/html/PageError.h"
#include "tests/conformance/tree_dump.h"

namespace intake::html {
namespace {

/// The tree below the body.
std::string tree(const std::string& body) {
    const EndMark endMark;
    const std::string dump = dumpTree(*parsePage("<!DOCTYPE html><body>" + body, endMark));
    const std::string start =
        "| <!DOCTYPE html>\n"
        "| <html>\n"
        "|   <head>\n"
        "|   <body>\n";
    EXPECT_EQ(dump.substr(0, start.size()), start);
    return dump.substr(start.size());
}

/// What the refusal of a page says; empty when it is not refused.
std::string refusalOf(const std::string& page, const EndMark& endMark,
                      size_t maxTreeBytes = 1'000'000'000) {
    try {
        parsePage(page, endMark, maxTreeBytes);
    } catch (const std::exception& error) {
        return error.what();
    }
    return "";
}

TEST(HtmlTree, PutsWhatMayNotStandInATableInFrontOfIt) {
    EXPECT_EQ(tree("<table>a<tr>b<td>c</table>"),
              "|     \"ab\"\n"
              "|     <table>\n"
              "|       <tbody>\n"
              "|         <tr>\n"
              "|           <td>\n"
              "|             \"c\"\n");
}

TEST(HtmlTree, OpensFormattingElementsAgainInTheNextBlock) {
    EXPECT_EQ(tree("<p><b>a<p>b</b>c"),
              "|     <p>\n"
              "|       <b>\n"
              "|         \"a\"\n"
              "|     <p>\n"
              "|       <b>\n"
              "|         \"b\"\n"
              "|       \"c\"\n");
}

TEST(HtmlTree, TakesABlockOutOfTheFormattingElementThatEndsInIt) {
    EXPECT_EQ(tree("<b>1<p>2</b>3</p>"),
              "|     <b>\n"
              "|       \"1\"\n"
              "|     <p>\n"
              "|       <b>\n"
              "|         \"2\"\n"
              "|       \"3\"\n");
}

TEST(HtmlTree, ClosesACellBeforeTheNextAndKeepsItsFormattingInside) {
    EXPECT_EQ(tree("<table><td><b>1<td>2"),
              "|     <table>\n"
              "|       <tbody>\n"
              "|         <tr>\n"
              "|           <td>\n"
              "|             <b>\n"
              "|               \"1\"\n"
              "|           <td>\n"
              "|             \"2\"\n");
}

TEST(HtmlTree, ReadsTheTextOfScriptsToTheirEndTag) {
    EXPECT_EQ(tree("<script>a</b>&amp;<!--<script></script>--></script>c"),
              "|     <script>\n"
              "|       \"a</b>&amp;<!--<script></script>-->\"\n"
              "|     \"c\"\n");
    EXPECT_EQ(tree("<style>a<b></STYLE >c"),
              "|     <style>\n"
              "|       \"a<b>\"\n"
              "|     \"c\"\n");
    EXPECT_EQ(tree("<textarea>\n&lt;<b></textarea>"),
              "|     <textarea>\n"
              "|       \"<<b>\"\n");
}

TEST(HtmlTree, TakesAttributesInEveryForm) {
    EXPECT_EQ(tree("<p A=1 b = '2\"' c=\"a&amp;b&copy=3\" d e=f/ A=2>"),
              "|     <p>\n"
              "|       a=\"1\"\n"
              "|       b=\"2\"\"\n"
              "|       c=\"a&b&copy=3\"\n"
              "|       d=\"\"\n"
              "|       e=\"f/\"\n");
}

TEST(HtmlTree, TakesCommentsInEveryForm) {
    EXPECT_EQ(tree("<!--a--b--><!--><!x><?y?></ z><!--c--!><!--d"),
              "|     <!-- a--b -->\n"
              "|     <!--  -->\n"
              "|     <!-- x -->\n"
              "|     <!-- ?y? -->\n"
              "|     <!--  z -->\n"
              "|     <!-- c -->\n"
              "|     <!-- d -->\n");
}

TEST(HtmlTree, TakesALessThanSignThatBeginsNoTagAsText) {
    EXPECT_EQ(tree("1 < 2 <3 </"), "|     \"1 < 2 <3 </\"\n");
}

TEST(HtmlTree, MakesEveryLineEndALineFeed) {
    EXPECT_EQ(tree("a\r\nb\rc\n"), "|     \"a\nb\nc\n\"\n");
}

TEST(HtmlTree, KeepsAParagraphOpenAroundATableOnlyInOldPages) {
    const EndMark endMark;
    EXPECT_EQ(tree("<p><table></table>"),
              "|     <p>\n"
              "|     <table>\n");
    EXPECT_EQ(dumpTree(*parsePage("<p><table></table>", endMark)),
              "| <html>\n"
              "|   <head>\n"
              "|   <body>\n"
              "|     <p>\n"
              "|       <table>\n");
}

TEST(HtmlTree, LeavesForeignContentWhereHtmlBegins) {
    EXPECT_EQ(tree("<svg><g><title>a</title><p>b</svg>c"),
              "|     <svg svg>\n"
              "|       <svg g>\n"
              "|         <svg title>\n"
              "|           \"a\"\n"
              "|     <p>\n"
              "|       \"bc\"\n");
}

TEST(HtmlTree, GivesUpOnceNobodyWaits) {
    EndMark endMark;
    endMark.set();
    std::string page;
    for (int number = 0; number < 100000; ++number) {
        page += "<p>";
    }
    EXPECT_EQ(refusalOf(page, endMark), "The load was given up.");
}

TEST(HtmlTree, TakesALongRunOfTextAsOneNode) {
    const EndMark endMark;
    const auto page = parsePage("<!DOCTYPE html><body>" + std::string(100000, '<'), endMark);
    const Node* const text = page->document.lastChild->lastChild->firstChild;
    EXPECT_EQ(text->text, std::string(100000, '<'));
    EXPECT_EQ(text->next, nullptr);
}

TEST(HtmlTree, KeepsTheFirstHundredAttributesOfAnElement) {
    std::string start = "<p";
    std::string kept;
    for (int number = 100; number < 200; ++number) {
        start += " a" + std::to_string(number);
        kept += "|       a" + std::to_string(number) + "=\"\"\n";
    }
    EXPECT_EQ(tree(start + ">"), "|     <p>\n" + kept);
    EXPECT_EQ(tree(start + " a200>"), "|     <p>\n" + kept);
}

TEST(HtmlTree, IsRefusedWhenItTakesTooMuchMemory) {
    const EndMark endMark;
    std::string page;
    for (int number = 0; number < 100000; ++number) {
        page += "<p a b c d e f g h i j k l m>";
    }
    EXPECT_EQ(refusalOf(page, endMark, 10'000'000),
              "The elements of the page take more than 10 MB of memory");
    EXPECT_EQ(refusalOf(page, endMark, 100'000'000), "");

    const size_t taken = parsePage(page, endMark)->arena.size();
    EXPECT_EQ(refusalOf(page, endMark, taken), "");
    EXPECT_NE(refusalOf(page, endMark, taken - 1), "");
}

}  // namespace
}  // namespace intake::html
