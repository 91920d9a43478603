// What the program `dump` shows of each kind of document.

#include <gtest/gtest.h>

#include "formats/source/ByteSource.h"
#include "formats/xml/libxml_setup.h"
#include "formats/xml/xml_load.h"
#include "tests/formats/json/parse.h"
#include "tests/formats/workbook/TestBook.h"
#include "tests/support/json_dump.h"
#include "tests/support/workbook_dump.h"
#include "tests/support/xml_dump.h"

namespace intake {

namespace {

TEST(Dump, NumbersTheNodesOfJsonAndSaysWhereContainersEnd) {
    EXPECT_EQ(dumpJson(parse(R"({"club": "\"A\"\n", "table": [7.50, {"won": true}], "x": null})")),
              R"(0 object of 3, behind it 7
1   club: string "\"A\"\n"
2   table: array of 2, behind it 6
3     number 7.50
4     object of 1, behind it 6
5       won: true
6   x: null
)");
}

TEST(Dump, NamesWhateverAnXmlDocumentIsMadeOf) {
    setUpLibxml();
    const std::string text =
        R"(<d xmlns:a="urn:a"><a:row a:pos="1" club="B">x<!--c--><![CDATA[<]]></a:row><?p q?></d>)";
    const LoadedXml loaded = loadXml(TextSource(text), EndMark());
    EXPECT_EQ(dumpXml(xmlDocGetRootElement(loaded.document.get())), R"(element d
  element {urn:a}row
    attribute {urn:a}pos "1"
    attribute club "B"
    text "x"
    comment "c"
    section "<"
  instruction p "q"
)");
}

TEST(Dump, ListsTheCellsOfSheetsByTheirKinds) {
    const std::string bytes =
        TestBook()
            .styles(R"(<cellXfs><xf numFmtId="0"/><xf numFmtId="14"/></cellXfs>)")
            .sheet("League", R"(<row r="2"><c r="B2" t="inlineStr"><is><t>Club</t></is></c>)"
                             R"(<c r="AA2"><v>7.5</v></c></row>)"
                             R"(<row r="3"><c r="A3" t="b"><v>1</v></c>)"
                             R"(<c r="B3" s="1"><v>44000</v></c></row>)")
            .sheet("Empty", "")
            .bytes();
    const TextSource file(bytes);
    const EndMark endMark;
    Workbook workbook(file, endMark);
    EXPECT_EQ(dumpWorkbook(workbook), R"(sheet "League"
  B2 text "Club"
  AA2 number 7.5
  A3 true
  B3 date 44000
sheet "Empty"
)");
}

}  // namespace

}  // namespace intake
