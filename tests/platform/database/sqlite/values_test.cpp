// What values are: of their own types, and of those that their columns declare.

#include "tests/platform/database/sqlite/SqliteTest.h"

namespace intake {

namespace {

using SqliteValues = SqliteTest;

TEST_F(SqliteValues, AreOfTheTypeInWhichTheyLie) {
    EXPECT_EQ(recordsOfQuery("SELECT 7, 2.5, 'text', NULL, x'00FF', -9223372036854775808, 9e999"),
              "I8 7|R8 2.5|BSTR text|NULL|BYTES|I8 -9223372036854775808|R8 inf|\n");
}

TEST_F(SqliteValues, OfOneColumnMayBeOfSeveralTypes) {
    EXPECT_EQ(recordsOfQuery("SELECT NULL AS v UNION ALL SELECT '01234' UNION ALL SELECT 7 "
                             "UNION ALL SELECT 2.5 UNION ALL SELECT x'41'"),
              "NULL|\nBSTR 01234|\nI8 7|\nR8 2.5|\nBYTES|\n");
}

TEST_F(SqliteValues, ThatAreTextsAreNeverTakenForNumbers) {
    run("CREATE TABLE mixed (v)");
    run("INSERT INTO mixed VALUES (1), ('1.50'), ('1e3'), ('Nan'), ('-INF'), ('01234')");

    EXPECT_EQ(recordsOfQuery("SELECT v FROM mixed"),
              "I8 1|\nBSTR 1.50|\nBSTR 1e3|\nBSTR Nan|\nBSTR -INF|\nBSTR 01234|\n");
    EXPECT_EQ(stored("REAL", "'Nan'"), "BSTR Nan|\n");
    EXPECT_EQ(stored("NUMERIC", "'-INF'"), "BSTR -INF|\n");
    EXPECT_EQ(stored("INTEGER", "'n/a'"), "BSTR n/a|\n");
    EXPECT_EQ(stored("INTEGER", "''"), "BSTR |\n");
}

TEST_F(SqliteValues, ThatAreTextsAreNotLostBesideBytes) {
    run("CREATE TABLE mixed (v BLOB)");
    run("INSERT INTO mixed VALUES (x'41'), ('a text'), (7)");

    EXPECT_EQ(recordsOfQuery("SELECT v FROM mixed"), "BYTES|\nBSTR a text|\nI8 7|\n");
    EXPECT_EQ(stored("VARBINARY(8)", "'text'"), "BSTR text|\n");
    EXPECT_EQ(stored("TEXT", "x'41'"), "BYTES|\n");
}

TEST_F(SqliteValues, OfWholeNumbersAreWholeWhateverTheWidthOfTheirColumn) {
    EXPECT_EQ(stored("TINYINT", "128"), "I8 128|\n");
    EXPECT_EQ(stored("INTEGER", "9999999999"), "I8 9999999999|\n");
    EXPECT_EQ(stored("BIGINT UNSIGNED", "-1"), "I8 -1|\n");
    EXPECT_EQ(stored("DECIMAL(9,2)", "1234567"), "I8 1234567|\n");
}

TEST_F(SqliteValues, OfColumnsOfFractionsAreDoubles) {
    EXPECT_EQ(stored("REAL", "7"), "R8 7|\n");
    EXPECT_EQ(stored("DOUBLE PRECISION", "-1e300"), "R8 -1e+300|\n");
    EXPECT_EQ(stored("numeric(10,2)", "7.5"), "R8 7.5|\n");
    EXPECT_EQ(stored("Numeric", "7"), "R8 7|\n");
    EXPECT_EQ(stored("INTEGER", "1.5"), "R8 1.5|\n");
}

TEST_F(SqliteValues, OfBooleanColumnsAreOneOrZero) {
    EXPECT_EQ(stored("BOOLEAN", "TRUE"), "BOOL 1|\n");
    EXPECT_EQ(stored("bool", "0"), "BOOL 0|\n");
    EXPECT_EQ(stored("BOOLEAN", "-5"), "BOOL 1|\n");
    EXPECT_EQ(stored("BIT", "'true'"), "BOOL 1|\n");
    EXPECT_EQ(stored("BIT", "'No'"), "BOOL 0|\n");
    EXPECT_EQ(stored("BOOLEAN", "'maybe'"), "BSTR maybe|\n");
    EXPECT_EQ(stored("BOOLEAN", "0.5"), "R8 0.5|\n");
    EXPECT_EQ(stored("BOOLEAN", "NULL"), "NULL|\n");
}

TEST_F(SqliteValues, OfDateColumnsHaveTheirTypeAlone) {
    EXPECT_EQ(stored("DATE", "'2026-11-20'"), "DATE|\n");
    EXPECT_EQ(stored("TIME", "72900"), "DATE|\n");
    EXPECT_EQ(stored("DATETIME", "'2026-11-20 20:15:00'"), "DATE|\n");
    EXPECT_EQ(stored("timestamp", "'2026-11-20 20:15:00'"), "DATE|\n");
    EXPECT_EQ(stored("DATE", "NULL"), "NULL|\n");
}

TEST_F(SqliteValues, OfColumnsWhoseTypeMerelyBeginsSoAreTheirOwn) {
    EXPECT_EQ(stored("BITMASK", "5"), "I8 5|\n");
    EXPECT_EQ(stored("DATELINE", "'London'"), "BSTR London|\n");
    EXPECT_EQ(stored("TIMEZONE", "'CET'"), "BSTR CET|\n");
    EXPECT_EQ(stored("DATETIME(3)", "'x'"), "DATE|\n");
}

TEST_F(SqliteValues, ThatAreTextsAreWhole) {
    EXPECT_EQ(stored("TEXT", "'Ünï 🏆'"), "BSTR Ünï 🏆|\n");
    EXPECT_EQ(stored("VARCHAR(3)", "'longer'"), "BSTR longer|\n");
    EXPECT_EQ(stored("CHAR", "''"), "BSTR |\n");
    EXPECT_EQ(recordsOfQuery("SELECT printf('%.*c', 10000000, 'x') AS v, 'next' AS w "
                             "UNION ALL SELECT 'short', 'last'"),
              "BSTR " + std::string(10'000'000, 'x') + "|BSTR next|\nBSTR short|BSTR last|\n");
}

TEST_F(SqliteValues, ThatAreTextsEndBeforeAZeroAsScriptsDo) {
    EXPECT_EQ(recordsOfQuery("SELECT 'a' || char(0) || 'b', char(0)"), "BSTR a|BSTR |\n");
}

TEST_F(SqliteValues, OfADatabaseInUtf16AreInUtf8) {
    for (const char* const encoding : {"UTF-16le", "UTF-16be"}) {
        directory_.write("wide.db", "");
        open("Driver=SQLite3;Database=wide.db");
        run(std::string("PRAGMA encoding = '") + encoding + "'");
        run("CREATE TABLE t AS SELECT 'Ünï 🏆' AS 'größe'");

        EXPECT_EQ(namesOfQuery("SELECT * FROM t"), "größe|");
        EXPECT_EQ(recordsOfQuery("SELECT * FROM t"), "BSTR Ünï 🏆|\n");
    }
}

}  // namespace

}  // namespace intake
