// What queries can do, and what they say when they cannot.

#include "platform/linux/sqlite/SqliteRecordset.h"
#include "tests/platform/database/sqlite/SqliteTest.h"

namespace intake {

namespace {

using SqliteQueries = SqliteTest;

constexpr uint32_t WRONG_COMMAND = 0x80040E14;
constexpr uint32_t NO_SUCH_TABLE = 0x80040E37;

TEST_F(SqliteQueries, GiveTheirRecordsInTheirOrder) {
    run("CREATE TABLE clubs (name TEXT, points INTEGER)");
    run("INSERT INTO clubs VALUES ('Rovers', 9), ('City', 12), ('United', NULL)");

    const auto records = connection_->openRecordset("SELECT * FROM clubs ORDER BY points DESC");

    EXPECT_EQ(namesOf(*records), "name|points|");
    EXPECT_EQ(recordsOf(*records), "BSTR City|I8 12|\nBSTR Rovers|I8 9|\nBSTR United|NULL|\n");
    EXPECT_TRUE(connection_->errors().empty());
}

TEST_F(SqliteQueries, GiveAValueAgainAndInAnyOrder) {
    const auto records = connection_->openRecordset("SELECT 'a' AS x, 'b' AS y");
    FieldValue value;

    records->moveFirst();
    for (const auto& [field, text] : {std::pair{1, "b"}, {0, "a"}, {1, "b"}}) {
        EXPECT_TRUE(records->value(static_cast<size_t>(field), value));
        EXPECT_EQ(value.text, text);
    }
    EXPECT_FALSE(records->value(2, value));
}

TEST_F(SqliteQueries, GiveTheirRecordsAgainFromTheFirst) {
    const auto records = connection_->openRecordset("VALUES (1), (2)");
    const std::string once = recordsOf(*records);

    records->moveFirst();

    EXPECT_EQ(recordsOf(*records), once);
}

TEST_F(SqliteQueries, WithoutRecordsHaveTheirFields) {
    run("CREATE TABLE clubs (name TEXT, points INTEGER)");

    const auto records = connection_->openRecordset("SELECT * FROM clubs");

    EXPECT_TRUE(records->atEnd());
    EXPECT_EQ(namesOf(*records), "name|points|");
}

TEST_F(SqliteQueries, HaveFieldsThatAreFoundWithoutRegardToCase) {
    const auto records = connection_->openRecordset("SELECT 1 AS Name, 2 AS Ünï, 3 AS NAME");

    EXPECT_EQ(records->findField("naME"), 0U);
    EXPECT_EQ(records->findField("üNÏ"), 1U);
    EXPECT_EQ(records->findField("nam"), std::nullopt);
}

TEST_F(SqliteQueries, NameTheirFieldsThemselves) {
    run("CREATE TABLE clubs (name TEXT, points INTEGER)");

    EXPECT_EQ(namesOfQuery("SELECT name AS \"Goals p.90\", clubs.points, name, 1.5, count(*), "
                           "'🏆' AS \"Größe 🏆\" FROM clubs"),
              "Goals p.90|points|name|1.5|count(*)|Größe 🏆|");
    EXPECT_EQ(namesOfQuery("SELECT a.name, b.name FROM clubs a, clubs b"), "name|name|");
}

TEST_F(SqliteQueries, MayBeValues) {
    EXPECT_EQ(recordsOfQuery("VALUES (1, 'a'), (2, 'b')"), "I8 1|BSTR a|\nI8 2|BSTR b|\n");
}

TEST_F(SqliteQueries, MayReturnWhatTheyWrite) {
    run("CREATE TABLE t (v)");

    EXPECT_EQ(recordsOfQuery("INSERT INTO t VALUES (1), (2) RETURNING v, v * 2"),
              "I8 1|I8 2|\nI8 2|I8 4|\n");
    EXPECT_EQ(recordsOfQuery("SELECT count(*) FROM t"), "I8 2|\n");
}

TEST_F(SqliteQueries, MayHaveCommentsAroundThem) {
    EXPECT_EQ(recordsOfQuery("-- the top\nSELECT 1; /* done */ -- really\n"), "I8 1|\n");
}

TEST_F(SqliteQueries, MayRunSideBySide) {
    const auto first = connection_->openRecordset("VALUES (1), (2)");
    const auto second = connection_->openRecordset("VALUES (3)");

    EXPECT_EQ(recordsOf(*second), "I8 3|\n");
    EXPECT_EQ(recordsOf(*first), "I8 1|\nI8 2|\n");
}

TEST_F(SqliteQueries, ThatReturnNothingAreRunButFail) {
    const PlatformError error =
        errorOf([&] { connection_->openRecordset("CREATE TABLE t AS SELECT 7 AS v"); });

    EXPECT_EQ(error.code(), NO_RECORDS);
    EXPECT_EQ(error.meaning(), "Operation is not allowed when the object is closed.");
    EXPECT_EQ(error.source(), "SQLite");
    EXPECT_EQ(error.description(), "The statement does not return records.");
    EXPECT_TRUE(connection_->errors().empty());
    EXPECT_EQ(recordsOfQuery("SELECT v FROM t"), "I8 7|\n");
}

TEST_F(SqliteQueries, ThatAreNoSqlSayWhere) {
    const PlatformError error = errorOf([&] { connection_->openRecordset("SELEC 1"); });

    EXPECT_EQ(error.code(), WRONG_COMMAND);
    EXPECT_EQ(error.meaning(), "One or more errors occurred during processing of command.");
    EXPECT_EQ(error.source(), "SQLite");
    EXPECT_EQ(error.description(), "near \"SELEC\": syntax error");
    EXPECT_EQ(errorLines(), "80040e14 near \"SELEC\": syntax error\n");
}

TEST_F(SqliteQueries, ThatNameAMissingTableSaySo) {
    const PlatformError error =
        errorOf([&] { connection_->openRecordset("SELECT * FROM Größen"); });

    EXPECT_EQ(error.code(), NO_SUCH_TABLE);
    EXPECT_EQ(errorLines(), "80040e37 no such table: Größen\n");
}

TEST_F(SqliteQueries, ThatAreEmptyFail) {
    for (const char* const query : {"", " \r\n", ";", "-- nothing"}) {
        const PlatformError error = errorOf([&] { connection_->openRecordset(query); });
        EXPECT_EQ(error.code(), 0x80040E0C);
        EXPECT_EQ(error.description(), "The query is empty.");
        EXPECT_TRUE(connection_->errors().empty());
    }
}

TEST_F(SqliteQueries, OfSeveralStatementsAreRefusedWhole) {
    errorOf([&] { connection_->openRecordset("CREATE TABLE t (v); SELECT 1"); });

    EXPECT_EQ(errorLines(), "80040e14 Something follows the end of the query:  SELECT 1\n");
    errorOf([&] { connection_->openRecordset("SELECT * FROM t"); });
    EXPECT_EQ(errorLines(), "80040e37 no such table: t\n");
}

TEST_F(SqliteQueries, WithParametersAreRefused) {
    errorOf([&] { connection_->openRecordset("SELECT @team"); });
    EXPECT_EQ(errorLines(), "80040e14 The query has a parameter without a value: @team\n");
}

TEST_F(SqliteQueries, ThatFailAtTheirFirstRecordFail) {
    EXPECT_EQ(errorOf([&] {
                  connection_->openRecordset("SELECT abs(-9223372036854775808)");
              }).description(),
              "The query failed: integer overflow");
}

TEST_F(SqliteQueries, ThatFailAtALaterRecordEndThere) {
    const auto records =
        connection_->openRecordset("SELECT 7 AS v UNION ALL SELECT abs(-9223372036854775808)");

    EXPECT_EQ(errorOf([&] { records->moveNext(); }).description(),
              "The query failed: integer overflow");
}

TEST_F(SqliteQueries, HaveTheColumnsOfTheTimeWhenTheyRun) {
    run("CREATE TABLE t AS SELECT 1 AS a, 2 AS b, 3 AS c");
    SqliteSession session("test.db", SQLITE_OPEN_READONLY, {}, endMark_);
    SqliteStatement statement(session, "SELECT * FROM t");
    run("ALTER TABLE t DROP COLUMN a");

    SqliteRecordset records(std::move(statement), "", endMark_);

    EXPECT_EQ(namesOf(records), "b|c|");
    EXPECT_EQ(recordsOf(records), "I8 2|I8 3|\n");
}

TEST_F(SqliteQueries, AfterOneThatFailedHaveNoErrors) {
    errorOf([&] { connection_->openRecordset("SELEC 1"); });

    EXPECT_EQ(recordsOfQuery("SELECT 1"), "I8 1|\n");
    EXPECT_EQ(errorLines(), "");
}

TEST_F(SqliteQueries, LoadNoExtension) {
    errorOf([&] { connection_->openRecordset("SELECT load_extension('evil.so')"); });

    EXPECT_NE(errorLines().find("not authorized"), std::string::npos) << errorLines();
}

}  // namespace

}  // namespace intake
