// What `explain` says of workbooks.

#include "tests/formats/workbook/TestBook.h"
#include "tests/workbench/cli/linux/ExplainTest.h"

namespace {

/// Rows of inline texts and of numbers.
std::string rowsOf(const std::vector<std::vector<std::string>>& rows) {
    std::string xml;
    for (const auto& row : rows) {
        xml += "<row>";
        for (const std::string& cell : row)
            xml += "<c t='inlineStr'><is><t>" + cell + "</t></is></c>";
        xml += "</row>";
    }
    return xml;
}

intake::TestBook fixtureList() {
    intake::TestBook book;
    book.sheet("Round 28", rowsOf({{"Match", "Home", "Away"},
                                   {"m1", "Holm", "Eskby"},
                                   {"m2", "Vik", "Holm"},
                                   {"m3", "Holm", "Vik"}}));
    book.sheet("Teams", rowsOf({{"Team", "Code"}, {"Holm", "HOL"}, {"Vik", "VIK"}}));
    return book;
}

/// A workbook with a sheet that is there and not shown.
std::string withHiddenSheet() {
    return fixtureList()
        .part("xl/workbook.xml",
              "<workbook xmlns='http://schemas.openxmlformats.org/spreadsheetml/2006/main' "
              "xmlns:r='http://schemas.openxmlformats.org/officeDocument/2006/relationships'>"
              "<sheets><sheet name='Round 28' sheetId='1' r:id='rId1'/>"
              "<sheet name='Teams' sheetId='2' state='hidden' r:id='rId2'/></sheets></workbook>")
        .bytes();
}

class ExplainedWorkbook : public ExplainTest {
protected:
    void expectOf(const std::string& bytes, const Settings& settings,
                  const std::string& text) const {
        write("fixtures.xlsx", bytes);
        expectExplained(joined({"queryMode=EXCEL", "filename=fixtures.xlsx", "sheet=Round 28",
                                "table=Match", "key=Match"},
                               settings),
                        text);
    }
    void expectOf(const Settings& settings, const std::string& text) const {
        expectOf(fixtureList().bytes(), settings, text);
    }
};

}  // namespace

TEST_F(ExplainedWorkbook, ThatLoadsHasATickAtEachStage) {
    expectOf({}, R"(
fixtures.xlsx: 3 records, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   1.6 kB
  ✓ format    a workbook
  ✓ selection sheet "Round 28": 3 rows, 3 columns
  ✓ key       Match
  ✓ rows      all 3
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedWorkbook, ASheetThatWasRenamedIsToldWithThoseThatAreThere) {
    expectOf({"sheet=Round 27"}, R"(
fixtures.xlsx: no records, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   1.6 kB
  ✓ format    a workbook
  ✗ selection sheet "Round 27"
              The workbook has no sheet "Round 27". It has: Round 28, Teams.
              Set "Table/Sheet" (sheet) to one of these, without a $ behind it.
  – key, rows, script, store: not reached
  Try: --set 'sheet=Round 28'   (3 records, checked)
)");
}

TEST_F(ExplainedWorkbook, ASheetOfAnotherNameIsProposedWithAKeyThatItHas) {
    expectOf({"sheet=Clubs"}, R"(
fixtures.xlsx: no records, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   1.6 kB
  ✓ format    a workbook
  ✗ selection sheet "Clubs"
              The workbook has no sheet "Clubs". It has: Round 28, Teams.
              Set "Table/Sheet" (sheet) to one of these, without a $ behind it.
  – key, rows, script, store: not reached
  Try: --set 'sheet=Round 28'   (3 records, checked)
)");
}

TEST_F(ExplainedWorkbook, ASheetWithADollarBehindItIsMended) {
    expectOf({"sheet=Round 28$"}, R"(
fixtures.xlsx: no records, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   1.6 kB
  ✓ format    a workbook
  ✗ selection sheet "Round 28$"
              The workbook has no sheet "Round 28$". It has: Round 28, Teams.
              Set "Table/Sheet" (sheet) to one of these, without a $ behind it.
  – key, rows, script, store: not reached
  Try: --set 'sheet=Round 28'   (3 records, checked)
)");
}

TEST_F(ExplainedWorkbook, NoSheetIsTold) {
    expectOf({"sheet="}, R"(
fixtures.xlsx: no records, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   1.6 kB
  ✓ format    a workbook
  ✗ selection sheet ""
              "Table/Sheet" (sheet) is empty: nothing says which sheet is read. It has: Round 28, Teams.
              Set "Table/Sheet" (sheet) to one of these, without a $ behind it.
  – key, rows, script, store: not reached
  Try: --set 'sheet=Round 28'   (3 records, checked)
)");
}

TEST_F(ExplainedWorkbook, AHiddenSheetIsLoadedAndSaidToBeHidden) {
    expectOf(withHiddenSheet(), {"sheet=Teams", "key=Code"}, R"(
fixtures.xlsx: 2 records, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   1.6 kB
  ✓ format    a workbook
  ✓ selection sheet "Teams", which is hidden: 2 rows, 2 columns
  ✓ key       Code
  ✓ rows      all 2
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedWorkbook, AHiddenSheetIsAmongThoseThatAreThere) {
    expectOf(withHiddenSheet(), {"sheet=Team"}, R"(
fixtures.xlsx: no records, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   1.6 kB
  ✓ format    a workbook
  ✗ selection sheet "Team"
              The workbook has no sheet "Team". It has: Round 28, Teams (hidden).
              Set "Table/Sheet" (sheet) to one of these, without a $ behind it.
  – key, rows, script, store: not reached
  Try: --set sheet=Teams --set key=Team   (2 records, checked)
)");
}

TEST_F(ExplainedWorkbook, AColumnThatWasRenamedInTheFieldsToReadIsMarkedThere) {
    expectOf({"range=Match, [Hme] AS Host"}, R"(
fixtures.xlsx: no records, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   1.6 kB
  ✓ format    a workbook
  ✗ selection Match, [Hme] AS Host
                     ^^^^^^^^^^^^^ The sheet "Round 28" has no column "Hme". It has: Match, Home, Away.
              Set "Fields to read" (range) to columns that are there, or leave it empty for all.
  – key, rows, script, store: not reached
  Try: --set 'range=Match, Home AS Host'   (3 records, checked)
)");
}

TEST_F(ExplainedWorkbook, AColumnThatWasRenamedInTheKeyIsTold) {
    expectOf({"key=Matches"}, R"(
fixtures.xlsx: no records, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   1.6 kB
  ✓ format    a workbook
  ✓ selection sheet "Round 28": 3 rows, 3 columns
  ✗ key       Matches
              None of the columns that are read is "Matches". They are: Match, Home, Away.
              Set "Key" (key) to one of these.
  – rows, script, store: not reached
  Try: --set key=Match   (3 records, checked)
)");
}

TEST_F(ExplainedWorkbook, AKeyThatIsNotAmongTheFieldsToReadIsTold) {
    expectOf({"range=Home, Away"}, R"(
fixtures.xlsx: no records, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   1.6 kB
  ✓ format    a workbook
  ✓ selection sheet "Round 28": 3 rows, 3 columns
  ✗ key       Match
              None of the columns that are read is "Match". They are: Home, Away.
              Set "Key" (key) to one of these.
  – rows, script, store: not reached
  Try: --set key=Away   (3 records, checked)
)");
}

TEST_F(ExplainedWorkbook, AKeyThatRepeatsOverwrites) {
    expectOf({"key=Home"}, R"(
fixtures.xlsx: 2 records, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   1.6 kB
  ✓ format    a workbook
  ✓ selection sheet "Round 28": 3 rows, 3 columns
  ! key       Home
              The keys are not unique: 1 record of 3 takes the place of an earlier one with the same key: Holm. 2 records are left.
              Set "Key" (key) to a column that differs from record to record, or "Field is a: " (mode) to DataArray.
  ✓ rows      all 3
  ✓ script
  ✓ store
  Try: --set key=Match   (3 records, checked)
)");
}

TEST_F(ExplainedWorkbook, AFirstRowBehindTheEndIsTold) {
    expectOf({"fromRow=5"}, R"(
fixtures.xlsx: no records, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   1.6 kB
  ✓ format    a workbook
  ✓ selection sheet "Round 28": 3 rows, 3 columns
  ✗ rows      from 5
              There are 3 rows, 0 to 2.
              Set "From row" (fromRow) to the first one that is wanted.
  – key: not looked at
  – script, store: not reached
  Try: --set fromRow=   (3 records, checked)
)");
}

TEST_F(ExplainedWorkbook, ASheetWithoutRowsIsFine) {
    intake::TestBook book;
    book.sheet("Round 28", rowsOf({{"Match", "Home"}}));
    expectOf(book.bytes(), {}, R"(
fixtures.xlsx: no records, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   1.2 kB
  ✓ format    a workbook
  ✓ selection sheet "Round 28": 0 rows, 2 columns; the sheet is there and has no rows
  ✓ rows      no row
  ✓ script
  ✓ store
  – key: not looked at
)");
}

TEST_F(ExplainedWorkbook, ThatIsEncryptedIsTold) {
    std::string bytes("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1\0\0", 10);
    bytes += std::string(600, '\0');
    for (const char letter : std::string("EncryptedPackage"))
        bytes += std::string{letter, '\0'};
    expectOf(bytes, {}, R"(
fixtures.xlsx: no records, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   642 bytes
  ✗ format    no workbook that can be read
              It is encrypted; save it without a password.
              Save the workbook as .xlsx, without a password.
  – selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedWorkbook, ThatIsCopiedHalfIsTold) {
    const std::string whole = fixtureList().bytes();
    expectOf(whole.substr(0, whole.size() / 2), {}, R"(
fixtures.xlsx: no records, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   811 bytes
  ✗ format    a workbook that is not whole or not right
              It has no zip directory; the file may be incomplete.
              Copy or save it again.
  – selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedWorkbook, ThatIsEmptyIsTold) {
    expectOf("", {}, R"(
fixtures.xlsx: no records, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   0 bytes
  ✗ format    empty
              The source is empty: it has not one character.
              Wait until it is written, or ask whoever writes it.
  – selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedWorkbook, OnTheWebIsNotRead) {
    expectOf({"filename=http://127.0.0.1:1/fixtures.xlsx"}, R"(
http://SERVER/fixtures.xlsx: no records, # s
  ✗ settings
              The query type is EXCEL, the first in the list, which reads files only, and "File Name" (filename) is an address.
              Set "Query type: " (queryMode) to what the source is.
  – address, fetched, format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedWorkbook, AMissingColumnIsMarkedWhereItStandsAlone) {
    expectOf({"range=Match, [Home], Ho"}, R"(
fixtures.xlsx: no records, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   1.6 kB
  ✓ format    a workbook
  ✗ selection Match, [Home], Ho
                             ^^ The sheet "Round 28" has no column "Ho". It has: Match, Home, Away.
              Set "Fields to read" (range) to columns that are there, or leave it empty for all.
  – key, rows, script, store: not reached
  Try: --set 'range=Match, [Home]'   (3 records, checked)
)");
}

TEST_F(ExplainedWorkbook, RecordsOfASharedMemoryThatNothingDividesAreCounted) {
    expectOf({"mode=Shared Memory", "shmvar=Top"}, R"(
fixtures.xlsx: 3 records, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   1.6 kB
  ✓ format    a workbook
  ✓ selection sheet "Round 28": 3 rows, 3 columns
  ✓ key       none is needed
  ✓ rows      all 3
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedWorkbook, FieldsThatAreNoListAreToldWithTheirReason) {
    write("fixtures.xlsx", fixtureList().bytes());
    const Explained explained(
        explain({"queryMode=EXCEL", "filename=fixtures.xlsx", "sheet=Round 28", "table=Match",
                 "key=Match", "range=Match,"},
                {"--out", "json"})
            .out);
    const ExplainedStage* const failed = explained.failed();
    ASSERT_NE(failed, nullptr);
    EXPECT_EQ(failed->name, "selection");
    EXPECT_EQ(failed->seen, "Match,");
    EXPECT_TRUE(failed->cause.starts_with("The plugin could not load it: ")) << failed->cause;
    EXPECT_EQ(failed->set, Settings{"range="});
    EXPECT_EQ(failed->records, 3U);
}

TEST_F(ExplainedWorkbook, FieldsThatCountAreFine) {
    expectOf({"mode=DataArray", "range=count(*) AS n"}, R"(
fixtures.xlsx: 1 record, # s
  ✓ settings
  ✓ address   fixtures.xlsx
  ✓ fetched   1.6 kB
  ✓ format    a workbook
  ✓ selection sheet "Round 28": 3 rows, 3 columns
  ✓ key       none is needed
  ✓ rows      all 3
  ✓ script
  ✓ store
)");
}
