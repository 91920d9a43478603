// Joins of sheets, whose rows an index finds from the second look on.

#include "platform/linux/workbook/ColumnIndex.h"
#include "tests/platform/workbook/WorkbookTest.h"

namespace intake {

namespace {

using WorkbookJoins = WorkbookTest;

std::string text(const std::string& value) {
    return "<c t='str'><v>" + value + "</v></c>";
}

std::string number(const std::string& value) {
    return "<c><v>" + value + "</v></c>";
}

/// A sheet of the columns x and n, the second of which numbers the rows below the header.
std::string sheetOf(const std::vector<std::string>& cells) {
    std::string rows = "<row>" + text("x") + text("n") + "</row>";
    for (size_t i = 0; i < cells.size(); ++i) {
        rows += "<row>" + cells[i] + number(std::to_string(i + 1)) + "</row>";
    }
    return rows;
}

const std::vector<std::string> AWKWARD{number("7"),
                                       text("7"),
                                       text(" 7 "),
                                       text("7.0"),
                                       text("Holm"),
                                       text("HOLM"),
                                       text(" holm"),
                                       text("Holm "),
                                       text(""),
                                       text("  "),
                                       "<c t='b'><v>1</v></c>",
                                       number("1"),
                                       number("-0"),
                                       number("0"),
                                       text("1e0"),
                                       text("+1"),
                                       "<c/>",
                                       number("0.1"),
                                       text("Größe"),
                                       text("GRÖßE"),
                                       text("7 a"),
                                       text(".5"),
                                       number("0.5"),
                                       "<c/>"};

TEST_F(WorkbookJoins, FindWhatIsEqualByTheRulesOfSqlite) {
    const TestBook book = TestBook().sheet("S", sheetOf(AWKWARD)).sheet("T", sheetOf(AWKWARD));
    for (const std::string left :
         {"a.x", "CAST(a.x AS TEXT)", "CAST(a.x AS REAL)", "CAST(a.x AS INTEGER)", "upper(a.x)"}) {
        for (const std::string collation : {"", " COLLATE BINARY", " COLLATE RTRIM"}) {
            // IS compares likewise, but has no use for the index.
            const auto join = [&](const std::string& operation) {
                return rows(book, "SELECT a.n, b.n AS m FROM [S$] a LEFT JOIN [T$] b ON " + left +
                                      operation + "b.x" + collation +
                                      " AND b.x IS NOT NULL ORDER BY a.n, m");
            };
            EXPECT_EQ(join(" = "), join(" IS ")) << left << collation;
        }
    }
}

TEST_F(WorkbookJoins, KeepTheOrderOfTheRows) {
    const std::vector<std::string> teams{text("Holm"), text("Eskby"), text("Quay")};
    const std::vector<std::string> players{text("quay"), text("HOLM"),   "<c/>",
                                           text("Quay"), text("nobody"), text("Holm")};
    EXPECT_EQ(rows(TestBook().sheet("S", sheetOf(teams)).sheet("T", sheetOf(players)),
                   "SELECT a.x, b.n FROM [S$] a LEFT JOIN [T$] b ON a.x = b.x"),
              "x|n\n'Holm'|2\n'Holm'|6\n'Eskby'|-\n'Quay'|1\n'Quay'|4\n");
}

TEST_F(WorkbookJoins, BeginWithTheSheetThatIsNamedFirst) {
    const TestBook book =
        TestBook()
            .sheet("S", sheetOf({text("b"), text("a"), text("b"), text("c"), text("a")}))
            .sheet("T", sheetOf({text("a"), text("b")}));
    EXPECT_EQ(rows(book, "SELECT a.n, b.x FROM [S$] a JOIN [T$] b ON a.x = b.x"),
              "n|x\n1|'b'\n2|'a'\n3|'b'\n5|'a'\n");
    EXPECT_EQ(rows(book, "SELECT a.n, b.x FROM [T$] b, [S$] a WHERE a.x = b.x"),
              "n|x\n2|'a'\n5|'a'\n1|'b'\n3|'b'\n");
}

TEST_F(WorkbookJoins, LeaveTheOrderOfRowsThatAreOnlyChosen) {
    const TestBook book = TestBook().sheet("S", sheetOf({text("c"), text("a"), text("b")}));
    EXPECT_EQ(rows(book, "SELECT x FROM [S$] WHERE x IN ('a', 'b', 'c')"), "x\n'c'\n'a'\n'b'\n");
    EXPECT_EQ(rows(book, "SELECT x FROM [S$] WHERE n = 3 OR x = 'a' OR n = 1"),
              "x\n'c'\n'a'\n'b'\n");
}

TEST_F(WorkbookJoins, LookOnlyAtTheRowsOfTheirRange) {
    const std::vector<std::string> cells(5, text("a"));
    EXPECT_EQ(rows(TestBook().sheet("S", sheetOf(cells)),
                   "SELECT a.n, b.[2] AS m FROM [S$A1:B3] a JOIN [S$A3:B5] b ON a.x = b.a"),
              "n|m\n1|3\n1|4\n2|3\n2|4\n");
}

TEST_F(WorkbookJoins, GoOnInSubqueriesAndWithThemselves) {
    const TestBook book =
        TestBook().sheet("S", sheetOf({text("a"), text("b"), text("A"), text("b"), text("c")}));
    EXPECT_EQ(rows(book,
                   "SELECT x, (SELECT count(*) FROM [S$] b WHERE b.x = a.x) AS k FROM [S$] a "
                   "WHERE EXISTS (SELECT 1 FROM [S$] c WHERE c.x = a.x AND c.n <> a.n)"),
              "x|k\n'a'|2i\n'b'|2i\n'A'|2i\n'b'|2i\n");
}

TEST_F(WorkbookJoins, OfLargeSheetsAreWhole) {
    constexpr int ROWS = 20'000;
    std::vector<std::string> up, down;
    for (int i = 0; i < ROWS; ++i) {
        up.push_back(text("team " + std::to_string(i)));
        down.push_back(text("TEAM " + std::to_string(ROWS - 1 - i)));
    }
    EXPECT_EQ(rows(TestBook().sheet("S", sheetOf(up)).sheet("T", sheetOf(down)),
                   "SELECT count(*) AS k, min(a.n + b.n) AS least, max(a.n + b.n) AS most "
                   "FROM [S$] a JOIN [T$] b ON a.x = b.x"),
              "k|least|most\n20000i|20001|20001\n");
}

TEST(ColumnIndex, FindsThePositionsOfAValue) {
    const TextTable shared;
    Sheet sheet(shared);
    sheet.restart(8);
    uint32_t row = 0;
    for (const char* const word : {"x", "Holm", "7", "holm ", "Eskby"}) {
        sheet.beginRow(++row);
        sheet.addText(0, word);
        sheet.endRow();
    }
    sheet.beginRow(++row);
    sheet.addNumber(0, CellKind::NUMBER, 7);
    sheet.endRow();
    const SheetTable table(sheet, {}, true);
    const ColumnIndex index(table, 0);
    const auto found = [](std::span<const uint32_t> positions) {
        return std::vector<uint32_t>(positions.begin(), positions.end());
    };
    EXPECT_EQ(found(index.find("HOLM")), (std::vector<uint32_t>{1, 3}));
    EXPECT_EQ(found(index.find(7)), (std::vector<uint32_t>{2, 5}));
    EXPECT_EQ(found(index.find(" 7.0")), (std::vector<uint32_t>{2, 5}));
    EXPECT_EQ(found(index.find("x")), std::vector<uint32_t>{});
}

}  // namespace

}  // namespace intake
