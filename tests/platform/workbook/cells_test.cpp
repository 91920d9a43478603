// What the cells of a sheet are as values.

#include "tests/platform/workbook/WorkbookTest.h"

namespace intake {

namespace {

using WorkbookCells = WorkbookTest;

constexpr auto ALL = "SELECT * FROM [S$];";

/// A sheet whose header names the one column A.
TestBook book(const std::string& rows) {
    return TestBook().sheet("S", "<row r=\"1\"><c r=\"A1\" t=\"str\"><v>A</v></c></row>" + rows);
}

/// A book of one cell below the header.
TestBook cell(const std::string& cell) {
    return book("<row r=\"2\">" + cell + "</row>");
}

TEST_F(WorkbookCells, AreNumbersTextsAndBooleans) {
    EXPECT_EQ(rows(TestBook()
                       .strings("<si><t>Name</t></si><si><t>Ada</t></si>")
                       .sheet("S",
                              "<row r='1'><c r='A1' t='s'><v>0</v></c>"
                              "<c r='B1' t='inlineStr'><is><t>Age</t></is></c>"
                              "<c r='C1' t='str'><v>In</v></c></row>"
                              "<row r='2'><c r='A2' t='s'><v>1</v></c><c r='B2'><v>36.5</v></c>"
                              "<c r='C2' t='b'><v>1</v></c></row>"),
                   ALL),
              "Name|Age|In\n"
              "'Ada'|36.5|true\n");
    EXPECT_EQ(rows(cell("<c t='b'><v>true</v></c>"), ALL), "A\ntrue\n");
}

TEST_F(WorkbookCells, KeepEveryDigitOfANumber) {
    EXPECT_EQ(rows(book("<row><c><v>0.1</v></c></row><row><c><v>-1E-7</v></c></row>"
                        "<row><c><v>123456789012345</v></c></row>"
                        "<row><c t='n'><v> 5.5 </v></c></row>"
                        "<row><c><v>1.7976931348623157E308</v></c></row>"),
                   ALL),
              "A\n0.1\n-1e-07\n123456789012345\n5.5\n1.7976931348623157e+308\n");
}

TEST_F(WorkbookCells, ThatHoldNoNumberWhereOneShouldBeKeepTheirText) {
    EXPECT_EQ(rows(book("<row><c><v>n/a</v></c></row><row><c><v>nan</v></c></row>"
                        "<row><c><v>1e999</v></c></row>"),
                   ALL),
              "A\n'n/a'\n'nan'\n'1e999'\n");
}

TEST_F(WorkbookCells, OfRichTextHaveItsTextWithoutPhoneticRuns) {
    const std::string rich =
        "<r><rPr><b/></rPr><t>Tide</t></r><r><t xml:space=\"preserve\">water </t></r>"
        "<rPh sb=\"0\" eb=\"1\"><t>taido</t></rPh><phoneticPr fontId=\"1\"/>";
    EXPECT_EQ(rows(book("<row><c t='s'><v>0</v></c></row><row><c t='inlineStr'><is>" + rich +
                        "</is></c></row>")
                       .strings("<si>" + rich + "</si>"),
                   ALL),
              "A\n'Tidewater '\n'Tidewater '\n");
}

TEST_F(WorkbookCells, HaveTheCharactersThatEscapesStandFor) {
    EXPECT_EQ(rows(book("<row><c t='s'><v>0</v></c></row>"
                        "<row><c t='str'><v>_x0041__xD83D__xDE00__x00_ _x005F_x0041_</v></c></row>"
                        "<row><c t='inlineStr'><is><t>_xD83D_!_x0000_</t></is></c></row>")
                       .strings("<si><t>one_x000D_\ntwo</t></si>"),
                   ALL),
              "A\n'one\r\ntwo'\n'A😀_x00_ _x0041_'\n'\xEF\xBF\xBD!'\n");
}

TEST_F(WorkbookCells, HaveTheCharactersThatReferencesStandFor) {
    EXPECT_EQ(rows(cell("<c t='str'><v>Fish &amp; Chips &lt;5&gt; &#8364;&#x20AC; &quot;&apos;</v>"
                        "</c>"),
                   ALL),
              "A\n'Fish & Chips <5> €€ \"''\n");
}

TEST_F(WorkbookCells, WithAnErrorAreNull) {
    EXPECT_EQ(rows(cell("<c t='e'><f>1/0</f><v>#DIV/0!</v></c>"), ALL), "A\n-\n");
}

TEST_F(WorkbookCells, WithAFormulaHaveTheValueThatIsStoredWithIt) {
    EXPECT_EQ(rows(book("<row><c><f>1+1</f><v>2</v></c></row>"
                        "<row><c t='str'><f>\"a\"&amp;\"b\"</f><v>ab</v></c></row>"
                        "<row><c><f>NOW()</f></c></row>"
                        "<row><c t='b'><f>TRUE</f><v>0</v></c></row>"),
                   ALL),
              "A\n2\n'ab'\n-\nfalse\n");
}

TEST_F(WorkbookCells, WithAnEmptyTextAreNotNull) {
    EXPECT_EQ(rows(cell("<c t='str'><v></v></c>"), ALL), "A\n''\n");
    EXPECT_EQ(rows(cell("<c t='s'><v>0</v></c>").strings("<si><t/></si>"), ALL), "A\n''\n");
}

TEST_F(WorkbookCells, WithAFormatAndNoValueAreNull) {
    EXPECT_EQ(rows(book("<row><c s='0'/></row><row><c><v>1</v></c></row>"), ALL), "A\n-\n1\n");
}

TEST_F(WorkbookCells, OfAMixedColumnEachKeepTheirValue) {
    EXPECT_EQ(rows(book("<row><c><v>7</v></c></row><row><c t='str'><v>seven</v></c></row>"
                        "<row><c t='b'><v>1</v></c></row><row/><row><c><v>0.5</v></c></row>"),
                   ALL),
              "A\n7\n'seven'\ntrue\n-\n0.5\n");
}

TEST_F(WorkbookCells, WithoutReferencesFollowOneAnother) {
    EXPECT_EQ(rows(TestBook().sheet("S",
                                    "<row><c t='str'><v>A</v></c><c t='str'><v>B</v></c></row>"
                                    "<row><c r='B7'><v>2</v></c><c><v>3</v></c></row>"),
                   ALL),
              "A|B|F3\n-|2|3\n");
}

TEST_F(WorkbookCells, InAnyOrderStandInTheirColumns) {
    EXPECT_EQ(rows(TestBook().sheet("S",
                                    "<row><c r='A1' t='str'><v>A</v></c>"
                                    "<c r='B1' t='str'><v>B</v></c></row>"
                                    "<row><c r='B2'><v>2</v></c><c r='A2'><v>1</v></c></row>"),
                   ALL),
              "A|B\n1|2\n");
}

TEST_F(WorkbookCells, OfOneColumnAndRowAreTheFirstOfThem) {
    EXPECT_EQ(rows(TestBook().sheet("S",
                                    "<row><c r='A1' t='str'><v>A</v></c>"
                                    "<c r='B1' t='str'><v>B</v></c></row>"
                                    "<row><c r='B2'><v>2</v></c><c r='A2'><v>1</v></c>"
                                    "<c r='B2'><v>3</v></c></row>"),
                   ALL),
              "A|B\n1|2\n");
}

TEST_F(WorkbookCells, ThatAreMergedHaveTheirValueInTheFirst) {
    EXPECT_EQ(rows(TestBook().sheetPart(
                       "S",
                       "<worksheet "
                       "xmlns='http://schemas.openxmlformats.org/spreadsheetml/2006/main'>"
                       "<sheetData><row r='1'><c r='A1' t='str'><v>A</v></c>"
                       "<c r='B1' t='str'><v>B</v></c></row>"
                       "<row r='2'><c r='A2'><v>1</v></c><c r='B2' s='0'/></row>"
                       "<row r='3'><c r='A3' s='0'/><c r='B3'><v>2</v></c></row></sheetData>"
                       "<mergeCells count='1'><mergeCell ref='A2:A3'/></mergeCells>"
                       "</worksheet>"),
                   ALL),
              "A|B\n1|-\n-|2\n");
}

TEST_F(WorkbookCells, BetweenOthersThatAreMissingAreNull) {
    EXPECT_EQ(rows(TestBook().sheet("S",
                                    "<row r='1'><c r='A1' t='str'><v>A</v></c>"
                                    "<c r='C1' t='str'><v>C</v></c></row>"
                                    "<row r='2'><c r='C2'><v>3</v></c></row>"
                                    "<row r='5'><c r='A5'><v>1</v></c></row>"),
                   ALL),
              "A|F2|C\n-|-|3\n-|-|-\n-|-|-\n1|-|-\n");
}

TEST_F(WorkbookCells, InTheLastRowAndColumnAreRead) {
    header_ = "NO";
    EXPECT_EQ(
        rows(TestBook().sheet("S", "<row r='1048576'><c r='XFD1048576'><v>1</v></c></row>"), ALL),
        "F1\n1\n");
}

TEST_F(WorkbookCells, HoldTheLastValueOrTheTextThatTheirTypeNames) {
    EXPECT_EQ(rows(cell("<c t='inlineStr'><v>1.0</v><is><t>1.</t></is></c>"), ALL), "A\n'1.'\n");
    EXPECT_EQ(rows(cell("<c t='inlineStr'><is><t>1.</t></is><v>1.0</v></c>"), ALL), "A\n'1.'\n");
    EXPECT_EQ(rows(cell("<c t='inlineStr'><v>1.0</v></c>"), ALL), "A\n'1.0'\n");
    EXPECT_EQ(rows(cell("<c><v>1</v><v>2</v></c>"), ALL), "A\n2\n");
    EXPECT_EQ(rows(cell("<c><v>1</v><is><t>x</t></is></c>"), ALL), "A\n1\n");
    EXPECT_EQ(rows(cell("<c t='str'><is><t>x</t></is><v>y</v></c>"), ALL), "A\n'y'\n");
    EXPECT_EQ(rows(cell("<c><is><r><t>x</t></r><r><t>y</t></r></is></c>"), ALL), "A\n'xy'\n");
}

}  // namespace

}  // namespace intake
