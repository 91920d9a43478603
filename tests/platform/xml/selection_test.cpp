// Which nodes an expression selects, and in which order.

#include "tests/platform/xml/XmlTest.h"

namespace intake {

namespace {

constexpr uint32_t UNSPECIFIED = 0x80004005;

using XmlSelection = XmlTest;

TEST_F(XmlSelection, NodesComeInDocumentOrder) {
    load("<a><b>1<c>2</c></b><c>3<b>4</b></c><b>5</b></a>");
    EXPECT_EQ(texts("//c/text() | //b/text()"), "1|2|3|4|5|");
    EXPECT_EQ(texts("/a/b[last()]/preceding::text()"), "1|2|3|4|");
}

TEST_F(XmlSelection, AttributesAndTextsAreNodesToo) {
    load("<a><b id=\"1\">2</b><b id=\"3\">4</b></a>");
    EXPECT_EQ(texts("/a/b/@id | /a/b/text()"), "1|2|3|4|");
    EXPECT_EQ(children("/a/b[1]/@id"), "#text=1|");
}

TEST_F(XmlSelection, NamespacesAreNodesToo) {
    load("<a xmlns=\"urn:d\" xmlns:p=\"urn:p\"/>");
    EXPECT_EQ(texts("/*/namespace::p"), "urn:p|");
    EXPECT_EQ(names("/*/namespace::p"), "xmlns:p|");
    EXPECT_EQ(markup("/*/namespace::p"), "xmlns:p=\"urn:p\"|");
    EXPECT_EQ(children("/*/namespace::p"), "");
}

TEST_F(XmlSelection, PredicatesAndFunctionsOfXPath1Work) {
    load("<a><b n=\"1\">x</b><b n=\"2\">y</b><b n=\"10\">xy</b></a>");
    EXPECT_EQ(texts("/a/b[@n > 1 and contains(., 'y')]"), "y|xy|");
    EXPECT_EQ(texts("/a/b[position() mod 2 = 1]"), "x|xy|");
    EXPECT_EQ(texts("/a/b[string-length() = 2 or count(preceding-sibling::*) = 0]"), "x|xy|");
}

TEST_F(XmlSelection, AnExpressionThatFindsNothingSelectsNoNodes) {
    load("<a/>");
    EXPECT_EQ(count("/b"), 0U);
}

TEST_F(XmlSelection, ADocumentThatWasNeverLoadedHasNoNodes) {
    EXPECT_EQ(document_->rootElement(), nullptr);
    EXPECT_EQ(count("//*"), 0U);
    EXPECT_EQ(document_->parseErrorReason(), "");
}

TEST_F(XmlSelection, NothingIsSelectedBeforeTheFirstExpression) {
    load("<a/>");
    EXPECT_EQ(document_->selectedCount(), 0U);
}

TEST_F(XmlSelection, LoadingAnewEndsTheSelection) {
    load("<a/>");
    ASSERT_EQ(count("/a"), 1U);
    load("<a/>");
    EXPECT_EQ(document_->selectedCount(), 0U);
}

TEST_F(XmlSelection, PrefixesAreThoseOfTheDeclarationsNotOfTheDocument) {
    load("<a xmlns=\"urn:d\" xmlns:p=\"urn:p\"><p:b>1</p:b><b>2</b></a>");
    document_->setSelectionNamespaces("xmlns:x=\"urn:d\"\n  xmlns:p='urn:d' xmlns:y='urn:p'");
    EXPECT_EQ(texts("/x:a/y:b"), "1|");
    EXPECT_EQ(texts("//p:b"), "2|");
}

TEST_F(XmlSelection, ADefaultNamespaceInTheDeclarationsDoesNotConcernExpressions) {
    load("<a><b xmlns=\"urn:d\">1</b><b>2</b></a>");
    document_->setSelectionNamespaces("xmlns=\"urn:d\"");
    EXPECT_EQ(texts("//b"), "2|");
}

TEST_F(XmlSelection, DeclarationsReplaceTheEarlierOnes) {
    load("<a xmlns=\"urn:d\"/>");
    document_->setSelectionNamespaces("xmlns:x=\"urn:d\"");
    document_->setSelectionNamespaces("");
    EXPECT_EQ(errorOf([&] { document_->selectNodes("/x:a"); }).code(), UNSPECIFIED);
}

TEST_F(XmlSelection, MalformedDeclarationsAreAnErrorThatQuotesThem) {
    for (const char* const wrong :
         {"urn:x", "xmlns:a=urn:x", "xmlns:a=\"urn:x", "a=\"urn:x\"", "xmlns:a=\"\"",
          "xmlns:a=\"urn:x\" xmlns:a=\"urn:y\"", "xmlns:a=\"urn:x\"><b/></namespaces><!-- "}) {
        const PlatformError error = errorOf([&] { document_->setSelectionNamespaces(wrong); });
        EXPECT_EQ(error.code(), UNSPECIFIED) << wrong;
        EXPECT_EQ(error.meaning(), "Unspecified error");
        EXPECT_NE(error.description().find(wrong), std::string::npos) << error.description();
    }
}

TEST_F(XmlSelection, AnInvalidExpressionIsAnErrorThatQuotesIt) {
    load("<a/>");
    for (const char* const wrong : {"", "//", "/a[", "a b", "/a[foo()]", "//p:a", "/a[$x]"}) {
        const PlatformError error = errorOf([&] { document_->selectNodes(wrong); });
        EXPECT_EQ(error.code(), UNSPECIFIED) << wrong;
        EXPECT_EQ(error.meaning(), "Unspecified error");
        EXPECT_NE(error.description().find(wrong), std::string::npos) << error.description();
    }
}

TEST_F(XmlSelection, AnExpressionThatIsNoNodeSetIsAnError) {
    load("<a/>");
    for (const char* const wrong : {"count(/a)", "'text'", "1 + 1", "/a = /a"}) {
        EXPECT_EQ(errorOf([&] { document_->selectNodes(wrong); }).code(), UNSPECIFIED) << wrong;
    }
}

TEST_F(XmlSelection, AnInvalidExpressionIsAnErrorInAnEmptyDocumentToo) {
    EXPECT_EQ(errorOf([&] { document_->selectNodes("/a["); }).code(), UNSPECIFIED);
    EXPECT_EQ(errorOf([&] { document_->selectNodes("//p:a"); }).code(), UNSPECIFIED);
}

TEST_F(XmlSelection, AKeyIsTheTextOfTheFirstNodeFoundFromTheRow) {
    load("<a><r><k> 1 </k><k>2</k></r><r id=\"3\"/></a>");
    ASSERT_EQ(count("/a/r"), 2U);
    document_->setKeyExpression("k");
    std::string keys;
    EXPECT_TRUE(document_->appendKeyText(document_->selected(0), keys));
    EXPECT_FALSE(document_->appendKeyText(document_->selected(1), keys));
    document_->setKeyExpression("@id");
    EXPECT_TRUE(document_->appendKeyText(document_->selected(1), keys));
    EXPECT_EQ(keys, "13");
}

TEST_F(XmlSelection, AKeyCanUsePrefixesAndLeadOutOfTheRow) {
    load("<a xmlns=\"urn:d\"><n>1</n><r/></a>");
    document_->setSelectionNamespaces("xmlns:x=\"urn:d\"");
    ASSERT_EQ(count("//x:r"), 1U);
    document_->setKeyExpression("../x:n");
    std::string key;
    EXPECT_TRUE(document_->appendKeyText(document_->selected(0), key));
    EXPECT_EQ(key, "1");
}

TEST_F(XmlSelection, AnInvalidKeyIsAnError) {
    EXPECT_EQ(errorOf([&] { document_->setKeyExpression("k["); }).code(), UNSPECIFIED);
}

TEST_F(XmlSelection, NamesBeyondAsciiBeginAbsolutePathsToo) {
    load("<\u00E9><b id='1'>1</b><b id='2'>/\u00E9</b></\u00E9>");
    EXPECT_EQ(texts("/\u00E9/b[1]"), "1|");
    EXPECT_EQ(texts("/\u00E9/b/@id"), "1|2|");
    EXPECT_EQ(texts("//b[/\u00E9]"), "1|/\u00E9|");
    EXPECT_EQ(texts("// \u00E9/b[. = '/\u00E9']/@id"), "2|");
    EXPECT_EQ(texts("/\u00E9/b[. = \"/\u00E9\"]/@id"), "2|");
}

TEST_F(XmlSelection, SlashesInALiteralAreNoSteps) {
    load("<a><b>x///y</b></a>");
    EXPECT_EQ(texts("a/b[. = 'x///y']"), "x///y|");
    EXPECT_EQ(texts("*['x///y' = b]"), "x///y|");
}

TEST_F(XmlSelection, APredicateKnowsItsPositionBehindAStepFromManyNodes) {
    load("<a><b/><b>2</b><b/></a>");
    EXPECT_EQ(texts("a/b[/a/b/following-sibling::b and position() = 2]"), "2|");
}

TEST_F(XmlSelection, IsInDocumentOrderWhereTextStandsBesideElements) {
    load("<r><a><b>B</b></a>tail</r>");
    EXPECT_EQ(texts("//b|/r/text()"), "B|tail|");
    EXPECT_EQ(texts("(//b|/r/text())[1]"), "B|");
    load("<r>0<a>1<b>2<c>3</c><!--4--></b>5</a><![CDATA[6]]><d><e>7</e></d><?p 8?>9<f>10</f></r>");
    EXPECT_EQ(texts("//c | //text() | //comment() | //processing-instruction() | //e | //f"),
              "0|1|2|3|3|4|5|6|7|7|8|9|10|10|");
    EXPECT_EQ(names("//* | //comment () | //processing-instruction()"),
              "r|a|b|c|#comment|d|e|p|f|");
    EXPECT_EQ(texts("/r/d | //c/text() | //b/ . | (//.)[. = '10']"), "23|3|7|10|10|");
    EXPECT_EQ(names("//f | //*[1 = 1] | //c"), "r|a|b|c|d|e|f|");
    EXPECT_EQ(names("//processing-instruction() | //e"), "e|p|");
    load("<r><a><b/></a><!--4--></r>");
    EXPECT_EQ(names("//comment() | //b"), "b|#comment|");
}

}  // namespace

}  // namespace intake
