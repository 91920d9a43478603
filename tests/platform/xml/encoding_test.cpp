// The encodings of sources, and of the texts that are taken from them.

#include "tests/platform/xml/XmlTest.h"

namespace intake {

namespace {

using XmlEncoding = XmlTest;

std::string utf16(const std::string& ascii, bool bigEndian) {
    std::string bytes;
    for (const char character : ascii) {
        bytes += bigEndian ? '\0' : character;
        bytes += bigEndian ? character : '\0';
    }
    return bytes;
}

TEST_F(XmlEncoding, WithoutADeclarationASourceIsUtf8) {
    EXPECT_TRUE(loadFile("<a>\xC3\xA4\xE2\x82\xAC</a>"));
    EXPECT_EQ(texts("/a"), "\xC3\xA4\xE2\x82\xAC|");
}

TEST_F(XmlEncoding, AUtf8MarkIsSkipped) {
    EXPECT_TRUE(loadFile("\xEF\xBB\xBF<a>\xC3\xA4</a>"));
    EXPECT_EQ(texts("/a"), "\xC3\xA4|");
}

TEST_F(XmlEncoding, AMarkGoesBeforeTheDeclaration) {
    EXPECT_TRUE(loadFile("\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?><a>\xC3\xA4</a>"));
    EXPECT_EQ(texts("/a"), "\xC3\xA4|");
}

TEST_F(XmlEncoding, Utf16WithAMarkIsRead) {
    const std::string source = "<?xml version='1.0' encoding='UTF-16'?><a>1</a>";
    EXPECT_TRUE(loadFile("\xFF\xFE" + utf16(source, false)));
    EXPECT_EQ(texts("/a"), "1|");
    EXPECT_TRUE(loadFile("\xFE\xFF" + utf16(source, true)));
    EXPECT_EQ(texts("/a"), "1|");
}

TEST_F(XmlEncoding, DeclaredEncodingsAreRead) {
    EXPECT_TRUE(loadFile("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4</a>"));
    EXPECT_EQ(texts("/a"), "\xC3\xA4|");
    EXPECT_TRUE(loadFile("<?xml version='1.0' encoding='windows-1252'?><a>\x80</a>"));
    EXPECT_EQ(texts("/a"), "\xE2\x82\xAC|");
}

TEST_F(XmlEncoding, AnIso88591DocumentGivesItsTextsNamesAndMarkupInIt) {
    document_ = services_.createDocument(TextEncoding::ISO_8859_1, XmlSource::LOCAL_FILE, endMark_);
    load("<größe><b>ä ÿ \xC2\x80</b></größe>");
    EXPECT_EQ(texts("/*"), "\xE4 \xFF \x80|");
    EXPECT_EQ(names("/*"),
              "gr\xF6\xDF"
              "e|");
    EXPECT_EQ(markup("/*"),
              "<gr\xF6\xDF"
              "e><b>\xE4 \xFF \x80</b></gr\xF6\xDF"
              "e>|");
}

TEST_F(XmlEncoding, WhatIso88591LacksIsAQuestionMark) {
    document_ = services_.createDocument(TextEncoding::ISO_8859_1, XmlSource::LOCAL_FILE, endMark_);
    load(
        "<a>1\xE2\x82\xAC"
        "2\xC4\x80"
        "3</a>");
    EXPECT_EQ(texts("/a"), "1?2?3|");
}

TEST_F(XmlEncoding, ExpressionsAndDeclarationsAreUtf8InEveryDocument) {
    document_ = services_.createDocument(TextEncoding::ISO_8859_1, XmlSource::LOCAL_FILE, endMark_);
    load("<a><größe>1</größe></a>");
    EXPECT_EQ(texts("/a/größe"), "1|");
}

}  // namespace

}  // namespace intake
