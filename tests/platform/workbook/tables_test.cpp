// Which tables a query can name.

#include "formats/workbook/table_names.h"
#include "platform/PlatformError.h"
#include "platform/linux/ProviderConnection.h"
#include "platform/linux/workbook/query_names.h"
#include "tests/platform/workbook/WorkbookTest.h"

namespace intake {

namespace {

using WorkbookTables = WorkbookTest;

std::string number(int value) {
    return "<row r='1'><c r='A1' t='str'><v>A</v></c></row><row r='2'><c r='A2'><v>" +
           std::to_string(value) + "</v></c></row>";
}

/// Rows 1 to 4 and columns A to D: a header of letters, below it the cells' places: 22 is B2.
const std::string GRID = [] {
    std::string rows = "<row r='1'>";
    for (const char letter : {'A', 'B', 'C', 'D'}) {
        rows += std::string("<c t='str'><v>") + letter + "</v></c>";
    }
    rows += "</row>";
    for (int row = 2; row <= 4; ++row) {
        rows += "<row r='" + std::to_string(row) + "'>";
        for (int column = 1; column <= 4; ++column) {
            rows += "<c><v>" + std::to_string(row * 10 + column) + "</v></c>";
        }
        rows += "</row>";
    }
    return rows;
}();

TEST_F(WorkbookTables, AreTheSheetsByNameWithADollarSign) {
    const TestBook book = TestBook().sheet("One", number(1)).sheet("Two", number(2));
    EXPECT_EQ(rows(book, "SELECT * FROM [Two$];"), "A\n2\n");
    EXPECT_EQ(rows(book, "SELECT * FROM \"One$\""), "A\n1\n");
    EXPECT_EQ(rows(book, "SELECT * FROM `one$`"), "A\n1\n");
    EXPECT_EQ(rows(book, "SELECT * FROM tWO$"), "A\n2\n");
}

TEST_F(WorkbookTables, CanHaveAnyName) {
    const TestBook book = TestBook()
                              .sheet("Week 1", number(1))
                              .sheet("Ann&apos;s &quot;list&quot;", number(2))
                              .sheet("Übersicht", number(3))
                              .sheet("順位表", number(4))
                              .sheet("A&amp;B (1.2) #3; --", number(5))
                              .sheet("Prices$", number(6));
    EXPECT_EQ(rows(book, "SELECT * FROM [Week 1$];"), "A\n1\n");
    EXPECT_EQ(rows(book, "SELECT * FROM ['Week 1$'];"), "A\n1\n");
    EXPECT_EQ(rows(book, "SELECT * FROM [Ann's \"list\"$];"), "A\n2\n");
    EXPECT_EQ(rows(book, "SELECT * FROM ['Ann''s \"list\"$'A1:A2];"), "A\n2\n");
    EXPECT_EQ(rows(book, "SELECT * FROM [ÜBERSICHT$];"), "A\n3\n");
    EXPECT_EQ(rows(book, "SELECT * FROM [順位表$];"), "A\n4\n");
    EXPECT_EQ(rows(book, "SELECT * FROM [A&B (1.2) #3; --$];"), "A\n5\n");
    EXPECT_EQ(rows(book, "SELECT * FROM [Prices$$];"), "A\n6\n");
}

TEST_F(WorkbookTables, AreHiddenSheetsToo) {
    TestBook book = TestBook().sheet("Shown", number(1)).sheet("Hidden", number(2));
    book.part(
        "xl/workbook.xml",
        "<workbook xmlns='http://schemas.openxmlformats.org/spreadsheetml/2006/main' "
        "xmlns:r='http://schemas.openxmlformats.org/officeDocument/2006/relationships'><sheets>"
        "<sheet name='Shown' sheetId='1' r:id='rId1'/>"
        "<sheet name='Hidden' sheetId='2' state='veryHidden' r:id='rId2'/></sheets>"
        "</workbook>");
    EXPECT_EQ(rows(book, "SELECT * FROM [Hidden$];"), "A\n2\n");
}

TEST_F(WorkbookTables, FollowTheWorkbooksListAndNotTheNamesOfItsFiles) {
    TestBook book = TestBook().sheet("First", number(1)).sheet("Second", number(2));
    book.part("xl/workbook.xml",
              "<workbook xmlns='http://schemas.openxmlformats.org/spreadsheetml/2006/main' "
              "xmlns:rel='http://schemas.openxmlformats.org/officeDocument/2006/relationships'>"
              "<sheets><sheet name='First' sheetId='7' rel:id='x'/>"
              "<sheet name='Second' sheetId='3' rel:id='y'/></sheets></workbook>")
        .part("xl/_rels/workbook.xml.rels",
              "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/relationships'>"
              "<Relationship Id='x' Type='http://x/relationships/worksheet' "
              "Target='/xl/worksheets/sheet2.xml'/>"
              "<Relationship Id='y' Type='http://x/relationships/worksheet' "
              "Target='./WorkSheets/../worksheets/Sheet1.xml'/></Relationships>");
    EXPECT_EQ(rows(book, "SELECT * FROM [First$];"), "A\n2\n");
}

TEST_F(WorkbookTables, CanBeARangeOfASheet) {
    const TestBook book = TestBook().sheet("S", GRID);
    EXPECT_EQ(rows(book, "SELECT * FROM [S$B1:C3]"), "B|C\n22|23\n32|33\n");
    EXPECT_EQ(rows(book, "SELECT * FROM [s$b2:$d$4];"), "22|23|24\n32|33|34\n42|43|44\n");
    EXPECT_EQ(rows(book, "SELECT * FROM [S$C3:B1]"), "B|C\n22|23\n32|33\n");
    EXPECT_EQ(rows(book, "SELECT * FROM [S$C:C]"), "C\n23\n33\n43\n");
    EXPECT_EQ(rows(book, "SELECT * FROM [S$3:4]"), "31|32|33|34\n41|42|43|44\n");
    EXPECT_EQ(rows(book, "SELECT * FROM [S$D3:D]"), "34\n44\n");
    EXPECT_EQ(rows(book, "SELECT * FROM [S$D4:F9]"), "44|F2|F3\n");
    header_ = "NO";
    EXPECT_EQ(rows(book, "SELECT * FROM [S$B2:C3]"), "F1|F2\n22|23\n32|33\n");
    EXPECT_EQ(rows(book, "SELECT * FROM [S$B2]"), "F1\n22\n");
}

TEST_F(WorkbookTables, OfARangeKeepItsLeadingBlanksAndNotItsTrailingOnes) {
    EXPECT_EQ(rows(TestBook().sheet("S", GRID), "SELECT * FROM [S$D3:E100]"), "34|F2\n44|-\n");
    EXPECT_EQ(rows(TestBook().sheet("S", "<row r='3'><c r='B3'><v>1</v></c></row>"),
                   "SELECT * FROM [S$A1:B9]"),
              "F1|F2\n-|-\n-|1\n");
    EXPECT_EQ(rows(TestBook().sheet("S", "<row r='3'><c r='B3'><v>1</v></c></row>"),
                   "SELECT * FROM [S$F8:G9]"),
              "F1|F2\n");
}

TEST_F(WorkbookTables, WithAnOpenEndKeepTheirLeadingBlanks) {
    const TestBook book = TestBook().sheet("S", "<row r='3'><c r='B3'><v>1</v></c></row>");
    header_ = "NO";
    EXPECT_EQ(rows(book, "SELECT * FROM [S$A1:B]"), "F1|F2\n-|-\n-|-\n-|1\n");
    EXPECT_EQ(rows(book, "SELECT * FROM [S$A1:3]"), "F1|F2\n-|-\n-|-\n-|1\n");
    EXPECT_EQ(rows(book, "SELECT * FROM [S$A:B]"), "F1|F2\n-|1\n");
    EXPECT_EQ(rows(book, "SELECT * FROM [S$3:3]"), "F1\n1\n");
}

TEST_F(WorkbookTables, EndWithARowOfErrorsHoweverTheyAreNamed) {
    const std::string error = "<c r='A3' t='e'><v>#N/A</v></c>";
    const std::string last = "<row r='3'>" + error + "</row>";
    const std::string first = "<row r='1'><c r='A1'><v>1</v></c><c r='B1'><v>2</v></c></row>";
    header_ = "NO";
    for (const std::string& sheet : {first + last, last + first}) {
        const TestBook book = TestBook().sheet("S", sheet);
        EXPECT_EQ(rows(book, "SELECT * FROM [S$]"), "F1|F2\n1|2\n-|-\n-|-\n");
        EXPECT_EQ(rows(book, "SELECT * FROM [S$A:B]"), "F1|F2\n1|2\n-|-\n-|-\n");
        EXPECT_EQ(rows(book, "SELECT * FROM [S$A1:A9]"), "F1\n1\n-\n-\n");
        EXPECT_EQ(rows(book, "SELECT * FROM [S$A1:A2]"), "F1\n1\n");
        EXPECT_EQ(rows(book, "SELECT * FROM [S$B:B]"), "F1\n2\n");
    }
}

TEST_F(WorkbookTables, AreListedUpToTenWhereOneIsMissing) {
    TestBook ten;
    for (int i = 0; i < 10; ++i) {
        ten.sheet(std::to_string(i), "");
    }
    const std::string sheets = R"("0", "1", "2", "3", "4", "5", "6", "7", "8", "9")";
    const auto error = [&](const std::string& listed) {
        return "The workbook \"PATH\" has no sheet \"S\"; its sheets are " + listed +
               ". A query names a sheet with a dollar sign behind it, as in [Sheet1$]";
    };
    EXPECT_EQ(queryError(ten, "SELECT * FROM [S$]"), error(sheets));
    EXPECT_EQ(queryError(ten.sheet("10", "").sheet("11", ""), "SELECT * FROM [S$]"),
              error(sheets + " and 2 more"));
}

TEST_F(WorkbookTables, CanBeNamesOfTheWorkbook) {
    const TestBook book =
        TestBook()
            .sheet("S", GRID)
            .sheet("My sheet", number(5))
            .names(
                "<definedName name='Middle'>S!$B$2:$C$3</definedName>"
                "<definedName name='Другой'>&apos;My sheet&apos;!$A:$A</definedName>"
                "<definedName name='Local' localSheetId='1'>'My sheet'!$A$1:$A$2</definedName>");
    EXPECT_EQ(rows(book, "SELECT * FROM Middle"), "22|23\n32|33\n");
    EXPECT_EQ(rows(book, "SELECT * FROM [MIDDLE]"), "22|23\n32|33\n");
    EXPECT_EQ(rows(book, "SELECT * FROM [другой]"), "A\n5\n");
    EXPECT_EQ(rows(book, "SELECT * FROM [My sheet$Local]"), "A\n5\n");
}

TEST_F(WorkbookTables, AreFoundByWhateverPathLeadsToTheirPart) {
    for (const char* target :
         {"worksheets/sheet1.xml", "worksheets/./sheet1.xml", "theme/../worksheets/sheet1.xml",
          "/xl/worksheets/sheet1.xml", "/xl/./theme/../worksheets/sheet1.xml",
          "../xl/worksheets/sheet1.xml"}) {
        TestBook book =
            TestBook().sheet("S", "<row><c><v>1</v></c></row><row><c><v>2</v></c></row>");
        book.part("xl/_rels/workbook.xml.rels",
                  "<Relationships><Relationship Id='rId1' Type='http://x/relationships/worksheet' "
                  "Target='" +
                      std::string(target) + "'/></Relationships>");
        EXPECT_EQ(rows(book, "SELECT * FROM [S$]"), "1\n2\n") << target;
    }
}

TEST_F(WorkbookTables, AreNotNamesOfFormulas) {
    EXPECT_EQ(queryError(TestBook().sheet("S", GRID).names(
                             "<definedName name='Sum'>SUM(S!$A$1:$A$3)</definedName>"
                             "<definedName name='Gone'>#REF!$A$1</definedName>"),
                         "SELECT * FROM Gone"),
              "The workbook \"PATH\" has no table \"Gone\"; its sheets are \"S\". A query names a "
              "sheet with a dollar sign behind it, as in [Sheet1$]");
}

TEST_F(WorkbookTables, CanBeJoined) {
    const TestBook book = TestBook().sheet("S", GRID).sheet("T", number(22));
    EXPECT_EQ(rows(book, "SELECT s.C, t.A AS b FROM [S$] AS s JOIN [T$] AS t ON s.B = t.A"),
              "C|b\n23|22\n");
    EXPECT_EQ(rows(book,
                   "WITH t AS MATERIALIZED (SELECT * FROM [T$]) SELECT s.C FROM [S$] AS s "
                   "JOIN t ON s.B = t.A"),
              "C\n23\n");
    EXPECT_EQ(rows(book, "SELECT a.A, b.D FROM [S$] a, [s$] b WHERE a.A = b.A AND a.B > 30"),
              "A|D\n31|34\n41|44\n");
}

TEST(NamesInAQuery, AreItsWordsAndQuotedTexts) {
    EXPECT_EQ(namesIn("SELECT a,[b c],\"d\"\"e\",`f``g` FROM ['h''s$'] WHERE i$='j''k'+1.5"),
              (std::vector<std::string>{"SELECT", "a", "b c", "d\"e", "f`g", "FROM", "'h''s$'",
                                        "WHERE", "i$", "j'k", "1", "5"}));
    EXPECT_EQ(namesIn("[open"), std::vector<std::string>{"open"});
    EXPECT_EQ(namesIn("[a]]"), std::vector<std::string>{"a"});
}

/// Sheets that hold next to nothing. What they give is read, but not shown, for it is much.
class WorkbookBlanks : public WorkbookTest {
protected:
    std::string read(const TestBook& book, const std::string& query) {
        ProviderConnection connection(endMark_);
        connection.open(connectionString(write(book.bytes())));
        const auto recordset = connection.openRecordset(query);
        try {
            readAll(*recordset);
        } catch (const PlatformError& error) {
            return error.description();
        }
        return "it ran";
    }

private:
    static void readAll(Recordset& recordset) {
        FieldValue value;
        for (; !recordset.atEnd(); recordset.moveNext()) {
            for (size_t field = 0; field < recordset.fieldCount(); ++field) {
                recordset.value(field, value);
            }
        }
    }
};

TEST_F(WorkbookBlanks, MayNotBeFarMoreThanTheValues) {
    const TestBook book =
        TestBook().sheet("S",
                         "<row r='1'><c r='A1'><v>1</v></c><c r='BXW1'><v>1</v></c></row>"
                         "<row r='1048576'><c r='A1048576'><v>1</v></c></row>");
    EXPECT_EQ(read(book, "SELECT * FROM [S$] LIMIT 4197"),
              "The records hold 0 values and more than 8388608 blank ones; look for a value far "
              "below or beside the others, or load fewer rows or columns");
    EXPECT_EQ(read(book, "SELECT * FROM [S$] LIMIT 4196"), "it ran");  // of 1999 columns
    EXPECT_EQ(read(book, "SELECT [1] FROM [S$]"), "it ran");
    EXPECT_EQ(read(book, "SELECT COUNT(*) FROM [S$]"), "it ran");
}

TEST_F(WorkbookBlanks, MayBeAHundredForEachValueBeyondThose) {
    const TestBook book = TestBook().sheet("S",
                                           "<row r='1'><c r='CV1'><v>1</v></c></row>"
                                           "<row r='100000'><c r='A100000'><v>1</v></c></row>");
    EXPECT_NE(read(book, "SELECT * FROM [S$A1:CV100000]"), "it ran");
    EXPECT_EQ(read(book, "SELECT *, 1 FROM [S$A1:CV100000]"), "it ran");
}

}  // namespace

}  // namespace intake
