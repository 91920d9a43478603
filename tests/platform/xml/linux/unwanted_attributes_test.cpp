// Which attributes a document keeps that was told what is wanted of it.

#include "tests/platform/xml/XmlTest.h"

namespace intake {

namespace {

class XmlAttributesKept : public XmlTest {
protected:
    XmlAttributesKept() { wanted_.expression = "(/d/r)"; }

    /// The markup of a document after loading it.
    std::string loaded(const std::string& text) {
        document_->takeRowsWhileLoading(wanted_, {[](Node) {}, [] {}});
        load(text);
        std::string all;
        document_->appendMarkup(document_->rootElement(), all);
        return all;
    }

    XmlRowsWanted wanted_;
};

constexpr const char* DOCUMENT = "<d><r id=\"1\"><n x=\"&lt;\">one</n></r></d>";
constexpr const char* BARE = "<d><r><n>one</n></r></d>";

TEST_F(XmlAttributesKept, AreNoneWhereNobodyAsksForThem) {
    EXPECT_EQ(loaded(DOCUMENT), BARE);
    wanted_.key = "(n)";
    EXPECT_EQ(loaded(DOCUMENT), BARE);
}

TEST_F(XmlAttributesKept, AreAllWhereOneIsAskedFor) {
    wanted_.expression = "(/d/r[@id])";
    EXPECT_EQ(loaded(DOCUMENT), DOCUMENT);
    wanted_.expression = "(/d/r)";
    wanted_.key = "@id";
    EXPECT_EQ(loaded(DOCUMENT), DOCUMENT);
    wanted_.key = "n";
    wanted_.needsMarkup = true;
    EXPECT_EQ(loaded(DOCUMENT), DOCUMENT);
}

TEST_F(XmlAttributesKept, AreAllWhereNothingWasSaidOfWhatIsWanted) {
    load(DOCUMENT);
    EXPECT_EQ(markup("/d"), std::string(DOCUMENT) + "|");
}

TEST_F(XmlAttributesKept, AreNotTheDeclarationsOfNamespacesWhichStay) {
    EXPECT_EQ(loaded("<d xmlns=\"urn:d\" x=\"1\"><p:r xmlns:p=\"urn:p\" p:x=\"1\"/></d>"),
              "<d xmlns=\"urn:d\"><p:r xmlns:p=\"urn:p\"/></d>");
}

TEST_F(XmlAttributesKept, DecideOnWhiteSpaceAllTheSame) {
    EXPECT_EQ(loaded("<d xml:space=\"preserve\"> <r/> </d>"), "<d> <r/> </d>");
    EXPECT_EQ(texts("/d"), "  |");
}

TEST_F(XmlAttributesKept, AreThoseOfADocumentWhoseElementsAreFoundById) {
    const char* const document = "<d><r xml:id=\"a\">one</r></d>";
    wanted_.expression = "id('a')";
    EXPECT_EQ(loaded(document), document);
    EXPECT_EQ(texts("id('a')"), "one|");
}

TEST_F(XmlAttributesKept, AreJudgedWhetherTheyAreKeptOrNot) {
    document_->takeRowsWhileLoading(wanted_, {[](Node) {}, [] {}});
    EXPECT_FALSE(document_->loadText("<d><r x='1' x='2'/></d>"));
    EXPECT_EQ(document_->parseErrorReason(), "Attribute x redefined (line 1, column 18)");
    EXPECT_FALSE(document_->loadText("<d><r x='&b;'/></d>"));
    EXPECT_FALSE(document_->loadText("<d><r x='<'/></d>"));
    EXPECT_FALSE(document_->loadText("<d><r p:x='1'/></d>"));
}

}  // namespace

}  // namespace intake
