// What can be loaded, and what cannot.

#include <filesystem>

#include "tests/platform/xml/XmlTest.h"

namespace intake {

namespace {

using XmlLoading = XmlTest;

TEST_F(XmlLoading, AFileIsLoaded) {
    EXPECT_TRUE(loadFile("<?xml version=\"1.0\"?>\n<a>1</a>\n"));
    EXPECT_EQ(document_->parseErrorReason(), "");
    EXPECT_EQ(texts("/a"), "1|");
}

TEST_F(XmlLoading, AMissingFileIsRefusedWithAReason) {
    EXPECT_FALSE(document_->loadFile((directory_.path() / "missing.xml").string()));
    EXPECT_NE(document_->parseErrorReason(), "");
}

TEST_F(XmlLoading, ADirectoryIsRefusedWithAReason) {
    EXPECT_FALSE(document_->loadFile(directory_.path().string()));
    EXPECT_NE(document_->parseErrorReason(), "");
}

TEST_F(XmlLoading, AnEmptyPathIsRefusedWithAReason) {
    EXPECT_FALSE(document_->loadFile(""));
    EXPECT_NE(document_->parseErrorReason(), "");
}

TEST_F(XmlLoading, AFileOfMoreThanTwoGigabytesIsRefusedWithAReason) {
    const std::string path = directory_.write("large.xml", "<a/>");
    std::filesystem::resize_file(path, uint64_t{1} << 31U);
    EXPECT_FALSE(document_->loadFile(path));
    EXPECT_EQ(document_->parseErrorReason(), "The document is larger than 2 GB");
}

struct Malformed {
    const char* name;
    const char* text;
    friend void PrintTo(const Malformed& malformed, std::ostream* out) { *out << malformed.name; }
};

class XmlMalformed : public XmlTest, public testing::WithParamInterface<Malformed> {};

TEST_P(XmlMalformed, IsRefusedWithAReasonAndLeavesTheDocumentEmpty) {
    load("<before/>");
    EXPECT_FALSE(document_->loadText(GetParam().text));
    EXPECT_NE(document_->parseErrorReason(), "");
    EXPECT_EQ(document_->rootElement(), nullptr);
    EXPECT_EQ(count("//node()"), 0U);
    load("<after/>");
    EXPECT_EQ(document_->parseErrorReason(), "");
}

TEST_P(XmlMalformed, IsRefusedInAFileToo) {
    EXPECT_FALSE(loadFile(GetParam().text));
    EXPECT_NE(document_->parseErrorReason(), "");
    EXPECT_EQ(document_->rootElement(), nullptr);
}

TEST_P(XmlMalformed, PrintsNothing) {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    document_->loadText(GetParam().text);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Texts, XmlMalformed,
    testing::Values(
        Malformed{"Nothing", ""}, Malformed{"WhiteSpace", " \n "}, Malformed{"NoMarkup", "{}"},
        Malformed{"NoEnd", "<a><b>"}, Malformed{"OtherEnd", "<a><b></a></b>"},
        Malformed{"TwoRoots", "<a/><b/>"}, Malformed{"TextBehindTheRoot", "<a/>b"},
        Malformed{"AttributeTwice", "<a b='1' b='2'/>"}, Malformed{"NoQuotes", "<a b=1/>"},
        Malformed{"TextBehindABrokenTag", "<a>x<c d><b::</a>\n"},
        Malformed{"PreservedTextBehindABrokenTag", "<a xml:space='preserve'>x<c d><b::</a>\n"},
        Malformed{"UnknownEntity", "<a>&nbsp;</a>"}, Malformed{"BareAmpersand", "<a>a & b</a>"},
        Malformed{"ControlCharacter", "<a>\x01</a>"}, Malformed{"NotUtf8", "<a>\xFF</a>"},
        Malformed{"LateDeclaration", " <?xml version='1.0'?><a/>"},
        Malformed{"UnknownEncoding", "<?xml version='1.0' encoding='x-none'?><a/>"},
        Malformed{"PrefixNotDeclared", "<p:a/>"},
        Malformed{"AttributePrefixNotDeclared", "<a p:b='1'/>"},
        Malformed{"TwoColons", "<a:b:c xmlns:a='urn:a'/>"},
        Malformed{"DtdInside", "<!DOCTYPE a [<!ELEMENT a ANY>]><a/>"},
        Malformed{"DtdWithoutContent", "<!DOCTYPE a><a/>"},
        Malformed{"DtdOutside", "<!DOCTYPE a SYSTEM 'http://127.0.0.1:9/a.dtd'><a/>"},
        Malformed{"EntityInside", "<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>"},
        Malformed{"EntityOutside",
                  "<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><a>&e;</a>"},
        Malformed{"EntityBomb",
                  "<!DOCTYPE a [<!ENTITY a '0123456789'><!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;'>"
                  "<!ENTITY c '&b;&b;&b;&b;&b;&b;&b;&b;'><!ENTITY d '&c;&c;&c;&c;&c;&c;&c;&c;'>"
                  "]><a>&d;&d;&d;&d;&d;&d;&d;&d;</a>"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(XmlLoading, ANamespaceThatIsNoUriIsANamespaceAllTheSame) {
    load("<p:a xmlns:p=\"no uri at all\">1</p:a>");
    document_->setSelectionNamespaces("xmlns:x=\"no uri at all\"");
    EXPECT_EQ(texts("/x:a"), "1|");
}

TEST_F(XmlLoading, ANamespaceMayBeARelativeUri) {
    document_->setSelectionNamespaces("xmlns:x=\"prices\"");
    for (const std::string encoding : {"UTF-8", "ISO-8859-1"}) {
        ASSERT_TRUE(loadFile("<?xml version=\"1.0\" encoding=\"" + encoding +
                             "\"?><a xmlns=\"prices\">1</a>"))
            << encoding;
        EXPECT_EQ(texts("/x:a"), "1|") << encoding;
    }
}

}  // namespace

}  // namespace intake
