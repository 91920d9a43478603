// How the columns of a sheet are named.

#include "formats/workbook/SheetTable.h"
#include "formats/workbook/column_names.h"
#include "tests/platform/workbook/WorkbookTest.h"

namespace intake {

namespace {

using WorkbookColumns = WorkbookTest;

constexpr auto ALL = "SELECT * FROM [S$];";

std::string text(const std::string& value) {
    return "<c t='str'><v>" + value + "</v></c>";
}

/// A sheet of a header row and one row of numbers.
TestBook book(const std::string& header, const std::string& numbers = "<c><v>1</v></c>") {
    return TestBook().sheet("S", "<row>" + header + "</row><row>" + numbers + "</row>");
}

TEST_F(WorkbookColumns, HaveTheTextsOfTheFirstRow) {
    EXPECT_EQ(fields(book(text("Name") + text("Größe") + text("順位")), ALL), "Name|Größe|順位\n");
}

TEST_F(WorkbookColumns, WithoutAHeaderCellAreNumbered) {
    EXPECT_EQ(fields(book(text("A") + text("B") + "<c/>" + text(" ") + text("E")), ALL),
              "A|B|F3|F4|E\n");
}

TEST_F(WorkbookColumns, BeyondTheHeaderAreNumbered) {
    EXPECT_EQ(rows(book(text("A"), "<c r='A2'><v>1</v></c><c r='C2'><v>3</v></c>"), ALL),
              "A|F2|F3\n1|-|3\n");
}

TEST_F(WorkbookColumns, OfTheSameNameHaveANumberAppended) {
    EXPECT_EQ(fields(book(text("Name") + text("Name") + text("NAME") + text("Name1") + text("Ö") +
                          text("ö")),
                     ALL),
              "Name|Name1|NAME2|Name11|Ö|ö1\n");
}

TEST_F(WorkbookColumns, HaveOneBlankWhereTheHeaderHasWhiteSpace) {
    EXPECT_EQ(fields(book(text(" Home \n  Goals ")), ALL), "Home Goals\n");
}

TEST_F(WorkbookColumns, HaveRoundBracketsForSquareOnes) {
    EXPECT_EQ(rows(book(text("Time [s]")), "SELECT [Time (s)] FROM [S$]"), "Time (s)\n1\n");
}

TEST_F(WorkbookColumns, CanBeNamedByNumbersBooleansAndDates) {
    EXPECT_EQ(fields(book("<c><v>2024</v></c><c><v>0.5</v></c><c t='b'><v>1</v></c>"
                          "<c t='d'><v>2024-05-01</v></c><c t='d'><v>2024-05-01T20:45:00</v></c>"
                          "<c t='e'><v>#N/A</v></c><c t='str'><v>Z</v></c>"),
                     ALL),
              "2024|0.5|TRUE|2024-05-01|2024-05-01 20:45:00|F6|Z\n");
}

TEST_F(WorkbookColumns, AreFoundWithoutRegardToCaseInAnyScript) {
    const TestBook cups = book(text("Name") + text("ÄRGER") + text("Счёт"),
                               "<c><v>1</v></c><c><v>2</v></c><c><v>3</v></c>");
    EXPECT_EQ(rows(cups, "SELECT nAME, [ärger], [СЧЁТ] FROM [S$]"), "Name|ÄRGER|Счёт\n1|2|3\n");
    EXPECT_EQ(rows(cups, "SELECT * FROM [S$] WHERE [ärger] = 2"), "Name|ÄRGER|Счёт\n1|2|3\n");
}

TEST_F(WorkbookColumns, WithAnyCharactersCanBeSelected) {
    EXPECT_EQ(rows(book(text("W.L.") + text("a \"b\"") + text("it''s 100%")),
                   "SELECT [W.L.], [a \"b\"] FROM [S$]"),
              "W.L.|a \"b\"\n1|-\n");
}

TEST_F(WorkbookColumns, AreNumberedAndTheFirstRowIsARecordWithoutHeader) {
    header_ = "No";
    EXPECT_EQ(rows(book(text("Name") + text("Name")), ALL), "F1|F2\n'Name'|'Name'\n1|-\n");
}

TEST_F(WorkbookColumns, BeginWithTheFirstRowAndColumnThatAreUsed) {
    EXPECT_EQ(rows(TestBook().sheet("S",
                                    "<row r='1'><c r='A1' s='0'/></row>"
                                    "<row r='4'><c r='C4' t='str'><v>A</v></c>"
                                    "<c r='E4' t='str'><v>C</v></c></row>"
                                    "<row r='5'><c r='D5'><v>2</v></c></row>"
                                    "<row r='9'><c r='A9' s='0'/></row>"),
                   ALL),
              "A|F2|C\n-|2|-\n");
}

TEST_F(WorkbookColumns, OfAHeaderAloneHaveNoRecords) {
    EXPECT_EQ(rows(TestBook().sheet("S", "<row>" + text("A") + text("B") + "</row>"), ALL),
              "A|B\n");
}

TEST_F(WorkbookColumns, OfAnEmptySheetAreOneWithoutRecords) {
    EXPECT_EQ(rows(TestBook().sheet("S", ""), ALL), "F1\n");
    header_ = "NO";
    EXPECT_EQ(rows(TestBook().sheet("S", ""), ALL), "F1\n");
}

TEST_F(WorkbookColumns, ThatAreTooManyAreRefusedUnlessARangeIsNamed) {
    const TestBook wide =
        TestBook().sheet("S", "<row><c r='A1'><v>1</v></c><c r='XFD1'><v>2</v></c></row>");
    EXPECT_EQ(
        queryError(wide, ALL),
        "The workbook \"PATH\" cannot be read: the sheet \"S\" has 16384 columns, of which at "
        "most 2000 can be read at once; name a range, such as [S$A1:Z100]");
    header_ = "NO";
    EXPECT_EQ(rows(wide, "SELECT * FROM [S$XFC1:XFD1]"), "F1|F2\n-|2\n");
}

TEST_F(WorkbookColumns, MayBeTwoThousandAndNoMore) {
    const auto reaching = [](const std::string& column) {
        return TestBook().sheet(
            "S", "<row><c r='A1'><v>1</v></c><c r='" + column + "1'><v>2</v></c></row>");
    };
    const std::string names = fields(reaching("BXX"), ALL);
    EXPECT_EQ(std::count(names.begin(), names.end(), '|'), 1999);
    EXPECT_EQ(queryError(reaching("BXY"), ALL),
              "The workbook \"PATH\" cannot be read: the sheet \"S\" has 2001 columns, of which at "
              "most 2000 can be read at once; name a range, such as [S$A1:Z100]");
}

TEST_F(WorkbookColumns, OfNumbersAreNamedAsTheSheetShowsThem) {
    const auto number = [](const std::string& value) { return "<c><v>" + value + "</v></c>"; };
    EXPECT_EQ(fields(book(number("100000") + number("1000000") + number("0.0001") + number("2024") +
                          number("1.5") + number("1E+20")),
                     ALL),
              "100000|1000000|0.0001|2024|1.5|1E+20\n");
}

TEST(SheetColumns, AreFoundAtOnceHoweverLongTheirNamesAre) {
    const TextTable noTexts;
    Sheet sheet(noTexts);
    sheet.beginRow(1);
    for (uint32_t column = 0; column < 2000; ++column) {
        sheet.addText(column, std::string(5000, 'n') + std::to_string(column));
    }
    sheet.endRow();
    sheet.end();
    const SheetTable table(sheet, std::nullopt, true);
    const std::string last = table.columns().back();
    for (int time = 0; time < 20000; ++time) {
        ASSERT_EQ(table.findColumn(last), 1999);
    }
}

TEST(ColumnNames, AreFoundAtOnceHoweverOftenOneIsRepeated) {
    Cell cell;
    cell.kind = CellKind::TEXT;
    cell.text = "A";
    const auto names = columnNames(std::vector<std::optional<Cell>>(MOST_COLUMNS, cell));
    EXPECT_EQ(names.front(), "A");
    EXPECT_EQ(names.back(), "A16383");
}

}  // namespace

}  // namespace intake
