// What the scanner reads by itself: what programs usually write. The rest takes the slower parser.

#include "formats/xml/XmlScanner.h"

#include <gtest/gtest.h>

namespace intake {

namespace {

class Ignored final : public XmlEvents {
public:
    void startDocument() override {}
    void startElement(std::string_view, const XmlAttributes&) override {}
    bool endElement() override { return true; }
    void text(std::string_view) override {}
};

/// Whether the scanner reads the whole document.
bool isScanned(const std::string& document) {
    Ignored events;
    XmlScanner<Ignored> scanner(events);
    return scanner.scan(document) == XmlScanner<Ignored>::Outcome::SCANNED && scanner.isComplete();
}

TEST(XmlScanner, ReadsADeclarationWithEitherLineEndOrNone) {
    const std::string declaration = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)";
    for (const char* const lineEnd : {"", "\n", "\r\n"}) {
        EXPECT_TRUE(isScanned(declaration + lineEnd + "<sst/>"));
    }
    EXPECT_TRUE(isScanned("\xEF\xBB\xBF" + declaration + "<sst/>"));
    EXPECT_FALSE(isScanned(declaration + "\r<sst/>"));
}

TEST(XmlScanner, ReadsASheetWithNamespacesThatItsCellsDoNotUse) {
    EXPECT_TRUE(isScanned(
        R"(<worksheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" )"
        R"(xmlns:mc="http://schemas.openxmlformats.org/markup-compatibility/2006" )"
        R"(mc:Ignorable="x14ac xr" xmlns:x14ac="urn:x14ac" xmlns:xr="urn:xr" )"
        R"(xr:uid="{00000000-0001-0000-0000-000000000000}"><dimension ref="A1:B2"/><sheetData>)"
        R"(<row r="1" spans="1:2" ht="15" customHeight="1" x14ac:dyDescent="0.25">)"
        R"(<c r="A1" s="1" t="s"><v>0</v></c><c r="B1"><f>A1&amp;"x"</f><v>7.5</v></c></row>)"
        R"(</sheetData><pageMargins left="0.7" right="0.7"/></worksheet>)"));
}

TEST(XmlScanner, ReadsTextsWithReferencesAndBlanksThatCount) {
    EXPECT_TRUE(
        isScanned("<sst count=\"2\"><si><t xml:space=\"preserve\"> Fish &amp; \xC3\xA9\n</t></si>"
                  "<si><r><rPr><b/></rPr><t>a</t></r><phoneticPr fontId=\"1\"/></si></sst>"));
}

TEST(XmlScanner, LeavesAllElseToTheParser) {
    for (const char* const document :
         {"<?xml version='1.0'?><sst/>", "<!-- --><sst/>", "<!DOCTYPE sst><sst/>", "<p:sst/>",
          "<sst><![CDATA[x]]></sst>", "<sst>\r\n</sst>", "<sst>&#0;</sst>", "<sst>\xFF</sst>",
          "<sst><si xmlns='urn:x'/></sst>", "<sst", "<sst>", "<sst></si>", "<sst/><sst/>", ""}) {
        EXPECT_FALSE(isScanned(document)) << document;
    }
}

}  // namespace

}  // namespace intake
