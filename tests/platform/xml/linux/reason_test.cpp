// The reasons that users read when a document does not load or an expression is wrong.

#include "tests/platform/xml/XmlTest.h"

namespace intake {

namespace {

using XmlReason = XmlTest;

TEST_F(XmlReason, NamesThePlaceWhereTheTextIsWrong) {
    EXPECT_FALSE(document_->loadText("<a>\n <b>\n</a>"));
    EXPECT_EQ(document_->parseErrorReason(),
              "Opening and ending tag mismatch: b line 2 and a (line 3, column 5)");
}

TEST_F(XmlReason, IsTheFirstOfSeveral) {
    EXPECT_FALSE(document_->loadText("<a>&one;\n&two;</a>"));
    EXPECT_EQ(document_->parseErrorReason(), "Entity 'one' not defined (line 1, column 9)");
}

TEST_F(XmlReason, IsInTheEncodingOfTheTextsOfTheDocument) {
    constexpr const char* WRONG = "<größe></a>";
    EXPECT_FALSE(document_->loadText(WRONG));
    EXPECT_TRUE(
        document_->parseErrorReason().starts_with("Opening and ending tag mismatch: größe line 1"))
        << document_->parseErrorReason();
    document_ = services_.createDocument(TextEncoding::ISO_8859_1, XmlSource::LOCAL_FILE, endMark_);
    EXPECT_FALSE(document_->loadText(WRONG));
    EXPECT_TRUE(
        document_->parseErrorReason().starts_with("Opening and ending tag mismatch: gr\xF6\xDF"
                                                  "e line 1"))
        << document_->parseErrorReason();
}

TEST_F(XmlReason, NamesAPrefixThatIsNotDeclared) {
    EXPECT_FALSE(document_->loadText("<a>\n<p:b/></a>"));
    EXPECT_EQ(document_->parseErrorReason(),
              "Namespace prefix p on b is not defined (line 2, column 5)");
}

TEST_F(XmlReason, SaysThatADtdIsProhibited) {
    EXPECT_FALSE(document_->loadText("<?xml version='1.0'?>\n<!DOCTYPE a><a/>"));
    EXPECT_EQ(document_->parseErrorReason(), "DTD is prohibited (line 2, column 12)");
}

TEST_F(XmlReason, IsTheSystemsWhenAFileCannotBeRead) {
    EXPECT_FALSE(document_->loadFile("/no/such/file.xml"));
    EXPECT_EQ(document_->parseErrorReason(), "No such file or directory");
    EXPECT_FALSE(document_->loadFile("/"));
    EXPECT_EQ(document_->parseErrorReason(), "Is a directory");
    EXPECT_FALSE(document_->loadFile("/dev/null"));
    EXPECT_EQ(document_->parseErrorReason(), "It is not a file");
}

TEST_F(XmlReason, OfAnExpressionIsTheLibrarysWithTheExpression) {
    load("<a/>");
    const auto descriptionOf = [&](const char* expression) {
        const PlatformError error = errorOf([&] { document_->selectNodes(expression); });
        EXPECT_EQ(error.source(), "libxml2");
        return error.description();
    };
    EXPECT_EQ(descriptionOf("/a["), "Invalid expression: /a[");
    EXPECT_EQ(descriptionOf("//p:a"), "Undefined namespace prefix: //p:a");
    EXPECT_EQ(descriptionOf("/a[foo()]"), "Unregistered function: /a[foo()]");
    EXPECT_EQ(descriptionOf("/a/text(]"), "Missing closing parenthesis: /a/text(]");
    EXPECT_EQ(descriptionOf("count(/a)"), "Expression must evaluate to a node-set: count(/a)");
}

TEST_F(XmlReason, NamesEveryExpressionThatLacksAPart) {
    load("<a/>");
    for (const std::string wrong : {"//a|", "///a", "|//a", "//a||//a", "/a///a", "a/", "//", "///",
                                    "a| |a", "/a|///a", "/ /a", "//a['/'] | // /a"}) {
        const PlatformError error = errorOf([&] { document_->selectNodes(wrong); });
        EXPECT_EQ(error.description(), "Invalid expression: " + wrong);
    }
}

TEST_F(XmlReason, IsNotThatSlashesOfALiteralLackAStep) {
    load("<a>1</a>");
    EXPECT_EQ(texts("/a['///' != \"//'/ /\"]"), "1|");
    EXPECT_EQ(texts("/ a | / | // a"), "1|1|");
}

TEST_F(XmlReason, IsNoneForWhatFollowsAnAttributeInsideOfItsElement) {
    load("<a i='1'><b>1</b></a>");
    EXPECT_EQ(texts("/a/@i/following::b"), "");  // as the page on XML says
}

TEST_F(XmlReason, SaysThatControlCharactersOfVersion11AreNotRead) {
    EXPECT_FALSE(document_->loadText("<?xml version='1.1'?>\n<a>&#1;</a>"));
    EXPECT_EQ(document_->parseErrorReason(),
              "Control characters as in XML 1.1 cannot be read (line 2, column 8)");
    EXPECT_FALSE(document_->loadText("<a>&#1;</a>"));
    EXPECT_EQ(document_->parseErrorReason(),
              "xmlParseCharRef: invalid xmlChar value 1 (line 1, column 8)");
    EXPECT_TRUE(document_->loadText("<?xml version='1.1'?><a>1</a>"));
}

}  // namespace

}  // namespace intake
