// Documents that are changed in memory.

#include "tests/platform/xml/XmlTest.h"

namespace intake {

namespace {

using XmlBuilding = XmlTest;

TEST_F(XmlBuilding, ElementsAreAppendedInOrder) {
    load("<payload/>");
    document_->appendElement(document_->rootElement(), "a");
    const Node b = document_->appendElement(document_->rootElement(), "b");
    document_->appendElement(b, "c");
    EXPECT_EQ(markup("/payload"), "<payload><a/><b><c/></b></payload>|");
}

TEST_F(XmlBuilding, ATextReplacesAllChildren) {
    load("<a>1<b><c/></b><!--2--></a>");
    document_->setText(document_->rootElement(), "<3 & 4>");
    EXPECT_EQ(markup("/a"), "<a>&lt;3 &amp; 4&gt;</a>|");
    EXPECT_EQ(texts("/a"), "<3 & 4>|");
}

TEST_F(XmlBuilding, AnEmptyTextLeavesNoChild) {
    load("<a>1</a>");
    document_->setText(document_->rootElement(), "");
    EXPECT_EQ(markup("/a"), "<a/>|");
}

TEST_F(XmlBuilding, ATextKeepsTheWhiteSpaceThatItWasGiven) {
    load("<a/>");
    document_->setText(document_->rootElement(), " 1 ");
    EXPECT_EQ(texts("/a"), " 1 |");
}

TEST_F(XmlBuilding, ElementsFollowATextThatWasSet) {
    load("<a/>");
    document_->setText(document_->rootElement(), "1");
    document_->appendElement(document_->rootElement(), "b");
    EXPECT_EQ(markup("/a"), "<a>1<b/></a>|");
}

TEST_F(XmlBuilding, AppendedElementsAreSelectedInDocumentOrder) {
    load("<a/>");
    const Node b = document_->appendElement(document_->rootElement(), "b");
    document_->appendElement(document_->rootElement(), "c");
    document_->appendElement(b, "d");
    EXPECT_EQ(names("//c | //d | //b"), "b|d|c|");
}

TEST_F(XmlBuilding, GoesOnInADocumentThatIsLoadedLater) {
    load("<a/>");
    document_->appendElement(document_->rootElement(), "b");
    load("<c>2</c>");
    const Node b = document_->appendElement(document_->rootElement(), "b");
    document_->setText(b, "1");
    document_->appendElement(document_->rootElement(), "b");
    EXPECT_EQ(markup("/c"), "<c>2<b>1</b><b/></c>|");
}

TEST_F(XmlBuilding, AnImpossibleNameIsAnErrorAndChangesNothing) {
    load("<a/>");
    for (const char* const wrong :
         {"", " ", "1", "a b", "<a>", "-a", "a\n", ":", "a:", ":a", "a:b:c"}) {
        const PlatformError error =
            errorOf([&] { document_->appendElement(document_->rootElement(), wrong); });
        EXPECT_EQ(error.code(), 0x80004005) << wrong;
        EXPECT_NE(error.description().find(wrong), std::string::npos) << error.description();
    }
    EXPECT_EQ(markup("/a"), "<a/>|");
}

TEST_F(XmlBuilding, ANameMayHaveAPrefix) {
    load("<a/>");
    document_->appendElement(document_->rootElement(), "p:b");
    EXPECT_EQ(names("/a/*"), "p:b|");
}

TEST_F(XmlBuilding, NamesBeyondAsciiArePossible) {
    load("<a/>");
    document_->appendElement(document_->rootElement(), "größe");
    EXPECT_EQ(names("/a/*"), "größe|");
}

}  // namespace

}  // namespace intake
