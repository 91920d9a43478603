// The same sheet in all the forms that XML allows, plain ones and such as only the parser reads.

#include "tests/platform/workbook/WorkbookTest.h"

namespace intake {

namespace {

using WorkbookXml = WorkbookTest;

constexpr auto ALL = "SELECT * FROM [S$];";
constexpr auto EXPECTED = "A\n1\n'x < y'\n";

const std::string MAIN = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
const std::string ROWS =
    "<row r='1'><c r='A1' t='s'><v>0</v></c></row><row r='2'><c r='A2'><v>1</v></c></row>"
    "<row r='3'><c r='A3' t='s'><v>1</v></c></row>";
const std::string STRINGS = "<si><t>A</t></si><si><t>x &lt; y</t></si>";

std::string worksheet(const std::string& rows) {
    return "<worksheet xmlns='" + MAIN + "'><sheetData>" + rows + "</sheetData></worksheet>";
}

/// A book whose sheet is this XML.
TestBook book(const std::string& xml) {
    return TestBook().strings(STRINGS).sheetPart("S", xml);
}

/// The text with a prefix at every element.
std::string prefixed(const std::string& xml) {
    std::string text;
    for (size_t at = 0; at < xml.size(); ++at) {
        text += xml[at];
        if (xml[at] == '<' && xml[at + 1] == '/') {
            text += xml[++at];
        }
        text += xml[at] == '<' || (xml[at] == '/' && xml[at - 1] == '<') ? "p:" : "";
    }
    return text;
}

std::string utf16(const std::string& ascii) {
    std::string wide = "\xFF\xFE";
    for (const char character : ascii) {
        wide += character;
        wide += '\0';
    }
    return wide;
}

TEST_F(WorkbookXml, CanBePlain) {
    EXPECT_EQ(rows(book(worksheet(ROWS)), ALL), EXPECTED);
    EXPECT_EQ(
        rows(book("\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n" + worksheet(ROWS)),
             ALL),
        EXPECTED);
}

TEST_F(WorkbookXml, CanHaveAPrefixAtEveryElement) {
    const std::string space = " xmlns:p='" + MAIN + "'>";
    EXPECT_EQ(
        rows(TestBook()
                 .sheetPart("S", "<p:worksheet" + space + "<p:sheetData>" + prefixed(ROWS) +
                                     "</p:sheetData></p:worksheet>")
                 .part("xl/sharedStrings.xml", "<p:sst" + space + prefixed(STRINGS) + "</p:sst>"),
             ALL),
        EXPECTED);
}

TEST_F(WorkbookXml, CanBeInTheStrictNamespaces) {
    const std::string space = "http://purl.oclc.org/ooxml/spreadsheetml/main";
    const std::string relations = "http://purl.oclc.org/ooxml/officeDocument/relationships";
    const std::string package =
        "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/relationships'>";
    EXPECT_EQ(
        rows(TestBook()
                 .sheetPart("S", "<worksheet xmlns='" + space + "'><sheetData>" + ROWS +
                                     "</sheetData></worksheet>")
                 .part("xl/sharedStrings.xml", "<sst xmlns='" + space + "'>" + STRINGS + "</sst>")
                 .part("_rels/.rels", package + "<Relationship Id='1' Type='" + relations +
                                          "/officeDocument' Target='xl/workbook.xml'/>"
                                          "</Relationships>")
                 .part("xl/workbook.xml", "<workbook xmlns='" + space + "' xmlns:r='" + relations +
                                              "'><sheets><sheet name='S' r:id='a'/></sheets>"
                                              "</workbook>")
                 .part("xl/_rels/workbook.xml.rels",
                       package + "<Relationship Id='a' Type='" + relations +
                           "/worksheet' Target='worksheets/sheet1.xml'/>"
                           "<Relationship Id='b' Type='" +
                           relations +
                           "/sharedStrings' Target='sharedStrings.xml'/>"
                           "</Relationships>"),
             ALL),
        EXPECTED);
}

TEST_F(WorkbookXml, CanHoldCommentsInstructionsAndCData) {
    EXPECT_EQ(rows(book("<?xml version='1.0'?><?note?><!-- <row> --><worksheet xmlns='" + MAIN +
                        "'><sheetData><!-- </row> --><row><c t='str'><v><![CDATA[A]]></v></c></row>"
                        "<row><c><v><!-- 7 -->1</v></c></row><?row </row>?>"
                        "<row><c t='str'><v>x <![CDATA[<]]> y</v></c></row></sheetData>"
                        "</worksheet>"),
                   ALL),
              EXPECTED);
}

TEST_F(WorkbookXml, CanBeInOtherEncodings) {
    EXPECT_EQ(rows(book(utf16("<?xml version='1.0' encoding='UTF-16'?>" + worksheet(ROWS))), ALL),
              EXPECTED);
    EXPECT_EQ(rows(book("<?xml version='1.0' encoding='ISO-8859-1'?>" +
                        worksheet("<row><c t='str'><v>\xC4</v></c></row>")),
                   ALL),
              "Ä\n");
}

TEST_F(WorkbookXml, CanHaveBlanksWhereTheyMeanNothing) {
    EXPECT_EQ(rows(book("<worksheet xmlns='" + MAIN +
                        "' >\n<sheetData >\r\n<row r = '1' >\n"
                        "<c t='str' ><v >A</v ></c ></row >\n<row ><c ><v > 1 </v></c></row >\n"
                        "<row\n><c\tt='str'><v>x &lt; y</v></c></row></sheetData ></worksheet >\n"),
                   ALL),
              EXPECTED);
}

TEST_F(WorkbookXml, CanHoldElementsOfOtherNamespacesAndUnknownOnes) {
    EXPECT_EQ(
        rows(book("<worksheet xmlns='" + MAIN +
                  "' xmlns:x='urn:x'><sheetPr/><x:sheetData><x:row><x:c><x:v>9</x:v></x:c>"
                  "</x:row></x:sheetData><sheetData><row><c t='str'><f>1</f><v>A</v><x:v>9</x:v>"
                  "</c></row><row x:dyDescent='0.2'><c><v>1</v><extLst><ext><v>9</v></ext>"
                  "</extLst></c></row><row><c t='str'><v>x &#60; y</v></c></row>"
                  "</sheetData></worksheet>"),
             ALL),
        EXPECTED);
}

TEST_F(WorkbookXml, WithADocumentTypeIsRefused) {
    const std::string dtd = "<!DOCTYPE worksheet [<!ENTITY x 'y'>]>";
    EXPECT_EQ(queryError(book(dtd + worksheet(ROWS)), ALL),
              "The workbook \"PATH\" cannot be read: the sheet \"S\" has a document type "
              "declaration, which is refused");
    TestBook other = book(worksheet(ROWS));
    other.part("xl/workbook.xml", dtd + "<workbook/>");
    EXPECT_EQ(openError(other),
              "The workbook \"PATH\" cannot be read: its part \"xl/workbook.xml\" has a document "
              "type declaration, which is refused");
}

TEST_F(WorkbookXml, ThatIsNotWellFormedIsRefused) {
    const std::string start = "The workbook \"PATH\" cannot be read: the sheet \"S\" ";
    for (const char* const rows :
         {"<row><c><v>1</v></row>", "<row><c r='A1' r='B1'/></row>",
          "<row><c><v>&nbsp;</v></c></row>", "<row><c><v>&#0;</v></c></row>",
          "<row><c><v>\x01</v></c></row>", "<row><c><v>\xFF</v></c></row>",
          "<row><c><v>]]></v></c></row>", "<row><c t='<'/></row>", "<row><c t=s/></row>",
          "<row r='1's='2'></row>", "<row><c", "<row></row><x:row>", "</sheetDatum>"}) {
        const std::string error = queryError(book(worksheet(rows)), ALL);
        EXPECT_TRUE(error.starts_with(start + "is no well-formed XML: ")) << rows << error;
    }
}

TEST_F(WorkbookXml, WithAReferenceOfItsOwnNamespaceInTextIsReadByEither) {
    const std::string value = "Ä &amp; &#xD6; 順 &gt; \xF0\x9F\x98\x80";
    const std::string cell =
        "<row><c t='str'><v>H</v></c></row><row><c t='str'><v>" + value + "</v></c></row>";
    const std::string expected = "H\n'Ä & Ö 順 > 😀'\n";
    EXPECT_EQ(rows(book(worksheet(cell)), ALL), expected);
    EXPECT_EQ(rows(book(worksheet("<!-- for the parser -->" + cell)), ALL), expected);
}

TEST_F(WorkbookXml, OfManyChunksIsReadToItsEnd) {
    std::string rowsXml = "<row><c t='str'><v>A</v></c></row>";
    std::string expected = "A\n";
    for (int i = 0; i < 60'000; ++i) {
        rowsXml += "<row r='" + std::to_string(i + 2) + "'><c><v>" + std::to_string(i) +
                   "</v></c></row>\n";
        expected += std::to_string(i) + "\n";
    }
    EXPECT_EQ(rows(book(worksheet(rowsXml)), ALL), expected);
    EXPECT_EQ(rows(book(worksheet(rowsXml + "<!-- -->")), ALL), expected);
}

TEST_F(WorkbookXml, OfARowThatIsLargerThanAChunkIsRead) {
    const std::string longText(600'000, 'x');
    EXPECT_EQ(rows(book(worksheet("<row><c t='str'><v>A</v></c></row><row><c t='str'><v>" +
                                  longText + "</v></c></row>")),
                   ALL),
              "A\n'" + longText + "'\n");
}

TEST_F(WorkbookXml, InUtf16WithAMarkMayNameItsByteOrder) {
    for (const std::string encoding : {"UTF-16", "UTF-16LE", "UTF-16BE", "utf-16"}) {
        const std::string xml =
            "<?xml version='1.0' encoding='" + encoding + "'?>" + worksheet(ROWS);
        EXPECT_EQ(rows(book(utf16(xml)), ALL), EXPECTED) << encoding;
    }
}

TEST_F(WorkbookXml, IsRefusedWhereItIsNestedToNoEnd) {
    const auto nested = [](size_t depth) {
        std::string xml;
        for (size_t i = 0; i < depth; ++i) {
            xml += "<a>";
        }
        for (size_t i = 0; i < depth; ++i) {
            xml += "</a>";
        }
        return xml;
    };
    EXPECT_EQ(rows(book(worksheet(ROWS + nested(998))), ALL), EXPECTED);
    EXPECT_EQ(queryError(book(worksheet(ROWS + nested(999))), ALL),
              "The workbook \"PATH\" cannot be read: the sheet \"S\" is nested deeper than 1000 "
              "elements");
}

TEST_F(WorkbookXml, CanHaveItsRowsInAnyOrder) {
    const std::string first = ROWS.substr(0, ROWS.find("<row r='2'"));
    const std::string second = ROWS.substr(first.size(), ROWS.find("<row r='3'") - first.size());
    const std::string third = ROWS.substr(first.size() + second.size());

    for (const std::string& rowsOfAll :
         {third + first + second, second + third + first, third + second + first}) {
        EXPECT_EQ(rows(book(worksheet(rowsOfAll)), ALL), EXPECTED);
    }
}

TEST_F(WorkbookXml, MayNotRepeatRowsWithoutEnd) {
    constexpr size_t MOST = 2 * 1048576;
    std::string rows = "<row r='2'><c r='A2' t='str'><v>A</v></c></row>";
    for (size_t i = 0; i < MOST - 2; ++i) {
        rows += "<row r='1'/>";
    }
    const std::string last = "<row r='3'><c r='A3'><v>1</v></c></row>";

    EXPECT_EQ(this->rows(book(worksheet(rows + last)), ALL), "A\n1\n");
    EXPECT_EQ(
        queryError(book(worksheet(rows + "<row r='1'/>" + last)), ALL),
        "The workbook \"PATH\" cannot be read: the sheet \"S\" names its rows more than twice");
}

TEST_F(WorkbookXml, CanRepeatARowOfWhichTheLastCounts) {
    const auto row = [](const std::string& number, const std::string& cells) {
        return "<row r='" + number + "'>" + cells + "</row>";
    };
    const auto cell = [](const std::string& column, const std::string& value) {
        return "<c r='" + column + "'><v>" + value + "</v></c>";
    };
    header_ = "NO";

    EXPECT_EQ(rows(book(worksheet(row("1", cell("A1", "1") + cell("C1", "3")) +
                                  row("2", cell("A2", "4")) +
                                  row("1", cell("A1", "5") + cell("B1", "6")))),
                   ALL),
              "F1|F2\n5|6\n4|-\n");
    EXPECT_EQ(rows(book(worksheet(row("1", cell("A1", "1")) + row("2", cell("A2", "2")) +
                                  row("3", cell("A3", "3")) + row("2", ""))),
                   ALL),
              "F1\n1\n-\n3\n");
}

}  // namespace

}  // namespace intake
