// What the text of a node is.

#include "tests/platform/xml/XmlTest.h"

namespace intake {

namespace {

using XmlText = XmlTest;

TEST_F(XmlText, TheTextOfAnElementIsTrimmedAtBothEnds) {
    load("<a> \t\r\n 1  2 \n</a>");
    EXPECT_EQ(texts("/a"), "1  2|");
}

TEST_F(XmlText, TheTextsOfAllDescendantsAreJoinedAndTheWholeIsTrimmed) {
    load("<a> 1 <b> 2 <c>3</c></b> 4 </a>");
    EXPECT_EQ(texts("/a"), "1  2 3 4|");
}

TEST_F(XmlText, TextOfWhiteSpaceOnlyIsNotThere) {
    load("<a>\n  <b>1</b>\n  <b> </b>\n</a>");
    EXPECT_EQ(children("/a"), "b=1|b=|");
    EXPECT_EQ(children("/a/b[2]"), "");
    EXPECT_EQ(texts("/a"), "1|");
}

TEST_F(XmlText, WhiteSpaceBesideOtherTextBelongsToIt) {
    load("<a>\n<b/>\n1\n<b/>\n</a>");
    EXPECT_EQ(children("/a"), "b=|#text=1|b=|");
    EXPECT_EQ(markup("/a/text()"), "\n1\n|");
}

TEST_F(XmlText, WhiteSpaceBehindACommentOrInstructionBelongsToNoText) {
    load("<a>1<!--2--> <b/>3<?four 4?> <b/>5<![CDATA[6]]> </a>");
    EXPECT_EQ(children("/a"), "#text=1|#comment=2|b=|#text=3|four=4|b=|#text=5|#cdata-section=6|");
}

TEST_F(XmlText, WhiteSpaceWrittenAsReferencesIsWhiteSpace) {
    load("<a><b>&#32;&#9;</b><c> &#32;1&#10; </c></a>");
    EXPECT_EQ(children("/a/b"), "");
    EXPECT_EQ(texts("/a/c"), "1|");
}

TEST_F(XmlText, ATextNodeOfItsOwnIsTrimmedToo) {
    load("<a> 1 <b/> 2 </a>");
    EXPECT_EQ(texts("/a/text()"), "1|2|");
}

TEST_F(XmlText, CDataIsNotTrimmed) {
    load("<a> <![CDATA[ 1 ]]> </a>");
    EXPECT_EQ(texts("/a"), " 1 |");
    EXPECT_EQ(children("/a"), "#cdata-section= 1 |");
}

TEST_F(XmlText, CDataSectionsSideBySideStayApart) {
    load("<a><![CDATA[x]]]]><![CDATA[>y]]></a>");
    EXPECT_EQ(children("/a"), "#cdata-section=x]]|#cdata-section=>y|");
    EXPECT_EQ(texts("/a"), "x]]>y|");
    EXPECT_EQ(markup("/a"), "<a><![CDATA[x]]]]><![CDATA[>y]]></a>|");
}

TEST_F(XmlText, TextAroundCDataIsTrimmedAtItsOuterEndOnly) {
    load("<a> 1 <![CDATA[ 2 ]]> 3 </a>");
    EXPECT_EQ(texts("/a"), "1  2  3|");
}

TEST_F(XmlText, WhiteSpaceOnlyWithinCDataStays) {
    load("<a><![CDATA[  ]]></a>");
    EXPECT_EQ(texts("/a"), "  |");
}

TEST_F(XmlText, CommentsAndInstructionsAreLeftOut) {
    load("<a>1<!--2-->3<?four five?>6</a>");
    EXPECT_EQ(texts("/a"), "136|");
}

TEST_F(XmlText, ACommentOrInstructionOfItsOwnHasItsContentAsText) {
    load("<a><!-- 1 --><?two three?></a>");
    EXPECT_EQ(texts("/a/comment() | /a/processing-instruction()"), " 1 |three|");
}

TEST_F(XmlText, PreservedSpaceStays) {
    load("<a xml:space=\"preserve\"> <b> 1 </b> </a>");
    EXPECT_EQ(texts("/a"), "  1  |");
    EXPECT_EQ(texts("/a/b"), " 1 |");
    EXPECT_EQ(children("/a"), "#text= |b= 1 |#text= |");
}

TEST_F(XmlText, PreservedSpaceEndsWhereTheDefaultIsAskedFor) {
    load("<a xml:space=\"preserve\"><b xml:space=\"default\"> 1 <c> </c></b><d> </d></a>");
    EXPECT_EQ(texts("//*"), "1  |1|| |");
}

TEST_F(XmlText, TextBesideAPreservingElementIsTrimmedUpToIt) {
    load("<a> 1 <b xml:space=\"preserve\"> 2 </b> </a>");
    EXPECT_EQ(texts("/a"), "1  2 |");
}

TEST_F(XmlText, TheValueOfAnAttributeIsNotTrimmed) {
    load("<a b=\" 1 &amp; 2 \"/>");
    EXPECT_EQ(texts("/a/@b"), " 1 & 2 |");
}

TEST_F(XmlText, AnElementWithoutContentHasAnEmptyText) {
    load("<a><b/><c></c></a>");
    EXPECT_EQ(texts("/a/*"), "||");
}

TEST_F(XmlText, ReferencesToCharactersAreReplaced) {
    load("<a>&lt;&gt;&amp;&quot;&apos;&#65;&#x20AC;</a>");
    EXPECT_EQ(texts("/a"), "<>&\"'A\xE2\x82\xAC|");
}

TEST_F(XmlText, LineEndsAreLineFeeds) {
    load("<a>1\r\n2\r3\n4</a>");
    EXPECT_EQ(texts("/a"), "1\n2\n3\n4|");
}

TEST_F(XmlText, TheTextOfTheDocumentIsThatOfItsRoot) {
    load("<?x y?><a> 1 </a><!-- 2 -->");
    EXPECT_EQ(texts("/"), "1|");
}

TEST_F(XmlText, TextLongerThanAParserBufferIsOneText) {
    const std::string text = "x" + std::string(100'000, ' ') + "y";
    load("<a> " + text + " </a>");
    EXPECT_EQ(texts("/a"), text + "|");
}

}  // namespace

}  // namespace intake
