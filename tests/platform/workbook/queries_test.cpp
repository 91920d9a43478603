// What queries can do, and what they cannot.

#include "platform/PlatformError.h"
#include "tests/platform/workbook/WorkbookTest.h"

namespace intake {

namespace {

using WorkbookQueries = WorkbookTest;

std::string row(const std::string& name, const std::string& points, bool in) {
    return "<row><c t='str'><v>" + name + "</v></c><c><v>" + points + "</v></c><c t='b'><v>" +
           (in ? "1" : "0") + "</v></c></row>";
}

const TestBook& league() {
    static const TestBook book = TestBook().sheet(
        "S",
        "<row><c t='str'><v>Name</v></c><c t='str'><v>Points</v></c>"
        "<c t='str'><v>In</v></c></row>" +
            row("Holm", "7", true) + row("eskby", "3", false) + row("Quay", "10", true));
    return book;
}

TEST_F(WorkbookQueries, ChooseColumnsAndRecords) {
    EXPECT_EQ(rows(league(), "SELECT Points, Name FROM [S$] WHERE Points > 5 ORDER BY Points DESC"),
              "Points|Name\n10|'Quay'\n7|'Holm'\n");
}

TEST_F(WorkbookQueries, CompareTextsWithoutRegardToCase) {
    EXPECT_EQ(rows(league(), "SELECT Name FROM [S$] WHERE Name = 'ESKBY'"), "Name\n'eskby'\n");
    EXPECT_EQ(rows(league(), "SELECT Name FROM [S$] ORDER BY Name"),
              "Name\n'eskby'\n'Holm'\n'Quay'\n");
    EXPECT_EQ(rows(league(), "SELECT Name FROM [S$] WHERE Name LIKE 'q%'"), "Name\n'Quay'\n");
}

TEST_F(WorkbookQueries, CompareBooleansByTheirNames) {
    EXPECT_EQ(rows(league(), "SELECT Name, [In] FROM [S$] WHERE [In] = TRUE"),
              "Name|In\n'Holm'|true\n'Quay'|true\n");
    EXPECT_EQ(rows(league(), "SELECT Name FROM [S$] WHERE NOT [In]"), "Name\n'eskby'\n");
}

TEST_F(WorkbookQueries, KeepTheTypesOfColumnsThatSubqueriesPassOn) {
    EXPECT_EQ(rows(league(), "SELECT x FROM (SELECT [In] AS x FROM [S$] ORDER BY Points) LIMIT 1"),
              "x\nfalse\n");
}

TEST_F(WorkbookQueries, ComputeWithFunctions) {
    EXPECT_EQ(rows(league(),
                   "SELECT count(*) AS n, sum(Points) AS s, upper(min(Name)) AS m, "
                   "avg([In]) AS a FROM [S$]"),
              "n|s|m|a\n3i|20|'ESKBY'|0.6666666666666666\n");
}

TEST_F(WorkbookQueries, KeepTheNumbersThatAUnionPutsBelowAColumn) {
    EXPECT_EQ(rows(league(),
                   "SELECT Points, [In] FROM [S$] WHERE Name = 'Holm' UNION ALL "
                   "SELECT count(*), 10 * count(*) FROM [S$]"),
              "Points|In\n7|true\n3i|30i\n");
    EXPECT_EQ(rows(league(), "SELECT Points FROM [S$] WHERE Points = 7 UNION ALL SELECT 1"),
              "Points\n7\n1i\n");
}

TEST_F(WorkbookQueries, DivideNumbersWithoutCuttingOff) {
    EXPECT_EQ(rows(league(), "SELECT Points / 2 AS half FROM [S$] WHERE Name = 'Holm'"),
              "half\n3.5\n");
}

TEST_F(WorkbookQueries, WriteWholeNumbersIntoTextsByACast) {
    EXPECT_EQ(rows(league(),
                   "SELECT Name || ' ' || CAST(Points AS INTEGER) AS line FROM [S$] "
                   "WHERE [In]"),
              "line\n'Holm 7'\n'Quay 10'\n");
}

TEST_F(WorkbookQueries, TakeTextsInDoubleQuotes) {
    EXPECT_EQ(rows(league(), "SELECT Points FROM [S$] WHERE Name = \"Holm\""), "Points\n7\n");
}

TEST_F(WorkbookQueries, GiveNoRecordsWhereNoneFit) {
    EXPECT_EQ(rows(league(), "SELECT * FROM [S$] WHERE Points > 100"), "Name|Points|In\n");
}

TEST_F(WorkbookQueries, CanBeRunOneAfterTheOtherAndTogether) {
    ProviderConnection connection(endMark_);
    connection.open(connectionString(write(league().bytes())));
    const auto first = connection.openRecordset("SELECT Name FROM [S$]");
    const auto second = connection.openRecordset("SELECT Points FROM [S$A1:B3]");
    EXPECT_EQ(written(*second), "Points\n7\n3\n");
    EXPECT_EQ(written(*first), "Name\n'Holm'\n'eskby'\n'Quay'\n");
}

TEST_F(WorkbookQueries, GiveTheirRecordsAgainFromTheFirst) {
    ProviderConnection connection(endMark_);
    connection.open(connectionString(write(league().bytes())));
    const auto recordset = connection.openRecordset("SELECT Name FROM [S$]");
    recordset->moveFirst();
    const std::string once = written(*recordset);
    recordset->moveFirst();
    EXPECT_EQ(written(*recordset), once);
}

TEST_F(WorkbookQueries, FindTheirFieldsWithoutRegardToCase) {
    ProviderConnection connection(endMark_);
    connection.open(connectionString(write(league().bytes())));
    const auto recordset = connection.openRecordset("SELECT Name, Points AS Wörth FROM [S$]");
    EXPECT_EQ(recordset->findField("NAME"), 0U);
    EXPECT_EQ(recordset->findField("wÖRTH"), 1U);
    EXPECT_EQ(recordset->findField("Points"), std::nullopt);
}

TEST_F(WorkbookQueries, ThatNameAMissingSheetFail) {
    EXPECT_EQ(
        queryError(league(), "SELECT * FROM [Sheet1$];"),
        "The workbook \"PATH\" has no sheet \"Sheet1\"; its sheets are \"S\". A query names a "
        "sheet with a dollar sign behind it, as in [Sheet1$]");
    EXPECT_EQ(queryError(league(), "SELECT * FROM S"),
              "The workbook \"PATH\" has no table \"S\"; its sheets are \"S\". A query names a "
              "sheet with a dollar sign behind it, as in [Sheet1$]");
}

TEST_F(WorkbookQueries, ThatNameAMissingColumnFail) {
    EXPECT_EQ(queryError(league(), "SELECT Score FROM [S$];"),
              "There is no column \"Score\" in the workbook \"PATH\". The columns of [S$] are "
              "\"Name\", \"Points\", \"In\"");
}

TEST_F(WorkbookQueries, ThatNameAMissingColumnListTenOfThose) {
    const auto error = [this](const std::string& firstName) {
        std::string header = "<c t='str'><v>" + firstName + "</v></c>";
        for (int column = 1; column < 12; ++column) {
            header += "<c t='str'><v>c" + std::to_string(column) + "</v></c>";
        }
        return queryError(TestBook().sheet("S", "<row>" + header + "</row>"),
                          "SELECT Score FROM [S$]");
    };
    const std::string start =
        "There is no column \"Score\" in the workbook \"PATH\". The columns of [S$] are \"";
    const std::string others =
        R"(", "c1", "c2", "c3", "c4", "c5", "c6", "c7", "c8", "c9" and 2 more)";
    EXPECT_EQ(error("c0"), start + "c0" + others);
    EXPECT_EQ(error(std::string(100, 'x')), start + std::string(100, 'x') + others);
    EXPECT_EQ(error(std::string(99, 'x') + "ÄÖ"), start + std::string(99, 'x') + "Ä..." + others);
}

TEST_F(WorkbookQueries, ThatAreNoSqlFail) {
    EXPECT_EQ(queryError(league(), "SELECT Name, FROM [S$];"),
              "The query cannot be run on the workbook \"PATH\": near \"FROM\": syntax error");
    EXPECT_EQ(queryError(league(), " "), "The query is empty.");
    EXPECT_EQ(queryError(league(), "SELECT 1; SELECT 2"),
              "Something follows the end of the query:  SELECT 2");
}

TEST_F(WorkbookQueries, WithParametersFailRatherThanFindNothing) {
    EXPECT_EQ(queryError(league(), "SELECT * FROM [S$] WHERE Name = @team"),
              "The query has a parameter without a value: @team");
    EXPECT_EQ(queryError(league(), "SELECT * FROM [S$] WHERE Name = ?"),
              "The query has a parameter without a value: ?");
}

TEST_F(WorkbookQueries, ReachNothingBesideTheWorkbook) {
    const std::string refused = "The query cannot be run on the workbook \"PATH\": not authorized";
    for (const char* const query :
         {"ATTACH 'other.db' AS other", "PRAGMA database_list", "CREATE TABLE t(a)",
          "CREATE TABLE t AS SELECT * FROM [S$]", "CREATE TEMP TABLE t(a)",
          "CREATE VIRTUAL TABLE t USING fts5(a)", "BEGIN", "ANALYZE",
          "INSERT INTO sqlite_master VALUES(1,2,3,4,5)", "DROP TABLE [S$]"}) {
        EXPECT_EQ(queryError(league(), query), refused) << query;
    }
    for (const char* const query : {"VACUUM INTO 'other.db'", "REINDEX"}) {
        EXPECT_EQ(queryError(league(), query),
                  "The query has no result; only SELECT can be run on a workbook");
    }
    EXPECT_EQ(queryError(league(), "SELECT load_extension('evil.so')"),
              "The query cannot be run on the workbook \"PATH\": not authorized to use function: "
              "load_extension");
    EXPECT_EQ(queryError(league(), "UPDATE [S$] SET Points = 0"),
              "The query cannot be run on the workbook \"PATH\": table S$ may not be modified");
    EXPECT_EQ(queryError(league(), "DELETE FROM [S$]"),
              "The query cannot be run on the workbook \"PATH\": table S$ may not be modified");
}

TEST_F(WorkbookQueries, ThatFailWhileTheyRunSayWhy) {
    EXPECT_EQ(queryError(league(), "SELECT abs(-9223372036854775807 - 1) FROM [S$]"),
              "The query failed: integer overflow");
}

TEST_F(WorkbookQueries, ThatNobodyWaitsForGiveUp) {
    ProviderConnection connection(endMark_);
    connection.open(connectionString(write(league().bytes())));
    const auto recordset = connection.openRecordset(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT i FROM n WHERE "
        "i = 1 OR i < 0");
    endMark_.set();
    try {
        recordset->moveNext();
        FAIL();
    } catch (const PlatformError& error) {
        EXPECT_EQ(error.code(), 0x80004004);
        EXPECT_EQ(error.description(), "The load was given up.");
    }
}

}  // namespace

}  // namespace intake
