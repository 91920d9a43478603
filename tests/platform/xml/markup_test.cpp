// The markup of a node.

#include "tests/platform/xml/XmlTest.h"

namespace intake {

namespace {

using XmlMarkup = XmlTest;

TEST_F(XmlMarkup, AnElementIsWrittenWithAllBelowItAndWithoutDroppedWhiteSpace) {
    load("<a x='1'>\n  <b>2</b>\n  <c/><!--3--><![CDATA[<4>]]><?five 6?><?seven?>\n</a>");
    EXPECT_EQ(markup("/a"),
              "<a x=\"1\"><b>2</b><c/><!--3--><![CDATA[<4>]]><?five 6?><?seven?></a>|");
}

TEST_F(XmlMarkup, OtherNodesAreWrittenAsTheyStand) {
    load("<a x=\"1\"> 2 <!--3--><?four 5?></a>");
    EXPECT_EQ(markup("/a/@x | /a/node()"), "x=\"1\"| 2 |<!--3-->|<?four 5?>|");
}

TEST_F(XmlMarkup, CharactersOfMarkupAreEscaped) {
    load("<a b=\"&amp;&lt;&gt;&quot;&apos;&#9;&#10;&#13;\">&amp;&lt;&gt;\"'&#13;</a>");
    EXPECT_EQ(markup("/a"),
              "<a b=\"&amp;&lt;&gt;&quot;'&#9;&#10;&#13;\">&amp;&lt;&gt;\"'&#13;</a>|");
}

TEST_F(XmlMarkup, WhatIsWrittenParsesToTheSame) {
    load("<a b=\"&#10;&quot;\" xmlns:p=\"urn:p\"><p:c>&lt;&#13;</p:c><d xmlns=\"urn:d\"/></a>");
    const std::string once = markup("/a");
    load(std::string_view(once).substr(0, once.size() - 1));
    EXPECT_EQ(markup("/a"), once);
}

TEST_F(XmlMarkup, DeclarationsOfTheNodeItselfAreWritten) {
    load("<a xmlns=\"urn:d\" xmlns:p=\"urn:p\"><p:b/></a>");
    EXPECT_EQ(markup("/*"), "<a xmlns=\"urn:d\" xmlns:p=\"urn:p\"><p:b/></a>|");
}

TEST_F(XmlMarkup, AnInheritedNamespaceIsDeclaredWhereItIsFirstUsed) {
    load("<a xmlns:p=\"urn:p\"><b><p:c><p:d/></p:c><e p:f=\"1\"/></b></a>");
    EXPECT_EQ(markup("/a/b"),
              "<b><p:c xmlns:p=\"urn:p\"><p:d/></p:c><e xmlns:p=\"urn:p\" p:f=\"1\"/></b>|");
}

TEST_F(XmlMarkup, AnInheritedNamespaceIsDeclaredInEachOfTheElementsSideBySide) {
    load("<a xmlns:p=\"urn:p\"><b><p:c/><p:c/></b></a>");
    EXPECT_EQ(markup("/a/b"), "<b><p:c xmlns:p=\"urn:p\"/><p:c xmlns:p=\"urn:p\"/></b>|");
}

TEST_F(XmlMarkup, AnInheritedDefaultNamespaceIsDeclaredOnce) {
    load("<a xmlns=\"urn:d\"><b><c/><c/></b></a>");
    EXPECT_EQ(markup("/*/*"), "<b xmlns=\"urn:d\"><c/><c/></b>|");
}

TEST_F(XmlMarkup, AnInheritedNamespaceThatIsNotUsedIsNotDeclared) {
    load("<a xmlns:p=\"urn:p\" xmlns:q=\"urn:q\"><q:b/></a>");
    EXPECT_EQ(markup("/*/*"), "<q:b xmlns:q=\"urn:q\"/>|");
}

TEST_F(XmlMarkup, APrefixThatIsDeclaredAnewMeansTheInnerNamespace) {
    load("<a xmlns:p=\"urn:1\"><b><p:c xmlns:p=\"urn:2\"/><p:c/></b></a>");
    EXPECT_EQ(markup("/a/b"), "<b><p:c xmlns:p=\"urn:2\"/><p:c xmlns:p=\"urn:1\"/></b>|");
}

TEST_F(XmlMarkup, AnElementOutsideTheDefaultNamespaceStaysOutside) {
    load("<a xmlns=\"urn:d\"><b xmlns=\"\"><c/></b></a>");
    EXPECT_EQ(markup("/*/*"), "<b xmlns=\"\"><c/></b>|");
}

TEST_F(XmlMarkup, ThePrefixXmlIsNeverDeclared) {
    load("<a><b xml:lang=\"de\"/></a>");
    EXPECT_EQ(markup("/a/b"), "<b xml:lang=\"de\"/>|");
}

}  // namespace

}  // namespace intake
