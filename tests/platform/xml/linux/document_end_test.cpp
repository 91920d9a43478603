// Nothing of a document may be left over that its parser has not looked at.

#include "tests/platform/xml/XmlTest.h"

namespace intake {

namespace {

class XmlDocumentEnd : public XmlTest {
protected:
    std::string reasonOf(const std::string& bytes) {
        return loadFile(bytes) ? "" : document_->parseErrorReason();
    }
};

std::string utf16(const std::string& ascii) {
    std::string bytes = "\xFF\xFE";
    for (const char character : ascii) {
        bytes += {character, '\0'};
    }
    return bytes;
}

const std::string ZERO(1, '\0');

TEST_F(XmlDocumentEnd, RefusesWhatStandsBehindAZero) {
    EXPECT_EQ(reasonOf("<a/>" + ZERO + "junk"),
              "Extra content at the end of the document (line 1, column 5)");
    EXPECT_EQ(reasonOf("<a/>\n" + ZERO + ZERO + " <b/>"),
              "Extra content at the end of the document (line 2, column 1)");
    EXPECT_NE(reasonOf("<a/>" + std::string(100'000, '\0') + "x"), "");
    EXPECT_NE(reasonOf(utf16("<a/>" + ZERO + "x")), "");
}

TEST_F(XmlDocumentEnd, AllowsZerosAtTheEnd) {
    EXPECT_EQ(reasonOf("<a/>" + ZERO), "");
    EXPECT_EQ(reasonOf("<a/>\n" + ZERO + ZERO + ZERO), "");
    EXPECT_EQ(reasonOf(utf16("<a/>" + ZERO)), "");
}

TEST_F(XmlDocumentEnd, RefusesHalfACharacter) {
    EXPECT_EQ(reasonOf(utf16("<a/>")), "");
    EXPECT_EQ(reasonOf(utf16("<a/>") + "x"),
              "Extra content at the end of the document (line 1, column 5)");
    EXPECT_EQ(reasonOf(utf16("<a/>") + ZERO),
              "Extra content at the end of the document (line 1, column 5)");
    EXPECT_NE(reasonOf(utf16("<a>" + std::string(100'000, 'x') + "</a>") + "x"), "");
}

}  // namespace

}  // namespace intake
