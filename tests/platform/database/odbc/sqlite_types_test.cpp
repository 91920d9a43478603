// What values of an SQLite database are by its ODBC driver. Its columns hold values of any type.

#include "tests/platform/database/odbc/OdbcSqliteTest.h"

namespace intake {

namespace {

using OdbcSqliteTypes = OdbcSqliteTest;

TEST_F(OdbcSqliteTypes, IntegersAreOfTheWidthThatTheColumnDeclares) {
    EXPECT_EQ(stored("TINYINT", "-128"), "I1 -128|\n");
    EXPECT_EQ(stored("SMALLINT", "-32768"), "I2 -32768|\n");
    EXPECT_EQ(stored("INTEGER", "-2147483648"), "I4 -2147483648|\n");
    EXPECT_EQ(stored("BIGINT", "-9223372036854775808"), "I8 -9223372036854775808|\n");
    EXPECT_EQ(stored("TINYINT UNSIGNED", "255"), "UI1 255|\n");
    EXPECT_EQ(stored("SMALLINT UNSIGNED", "65535"), "UI2 65535|\n");
    EXPECT_EQ(stored("INTEGER UNSIGNED", "4294967295"), "UI4 4294967295|\n");
    EXPECT_EQ(stored("BIGINT UNSIGNED", "9223372036854775807"), "UI8 9223372036854775807|\n");
}

TEST_F(OdbcSqliteTypes, IntegersThatAreTooWideForTheirColumnAreNotCut) {
    EXPECT_EQ(stored("TINYINT", "128"), "I8 128|\n");
    EXPECT_EQ(stored("SMALLINT", "-32769"), "I8 -32769|\n");
    EXPECT_EQ(stored("INTEGER", "9999999999"), "I8 9999999999|\n");
    EXPECT_EQ(stored("INTEGER", "2147483647"), "I4 2147483647|\n");
    EXPECT_EQ(stored("INTEGER", "2147483648"), "I8 2147483648|\n");
    EXPECT_EQ(stored("TINYINT UNSIGNED", "-1"), "I8 -1|\n");
    EXPECT_EQ(stored("BIGINT UNSIGNED", "-1"), "I8 -1|\n");
}

TEST_F(OdbcSqliteTypes, RealNumbersAreDoubles) {
    EXPECT_EQ(stored("REAL", "1.25"), "R8 1.25|\n");
    EXPECT_EQ(stored("DOUBLE PRECISION", "-1e300"), "R8 -1e+300|\n");
    EXPECT_EQ(stored("FLOAT", "9e999"), "R8 inf|\n");
    EXPECT_EQ(stored("NUMERIC(10,2)", "7.5"), "R8 7.5|\n");
}

TEST_F(OdbcSqliteTypes, TextsAreTexts) {
    EXPECT_EQ(stored("TEXT", "'Ünï 🏆'"), "BSTR Ünï 🏆|\n");
    EXPECT_EQ(stored("VARCHAR(3)", "'longer'"), "BSTR longer|\n");
    EXPECT_EQ(stored("CHAR", "''"), "BSTR |\n");
    EXPECT_EQ(stored("", "'of no type'"), "BSTR of no type|\n");
}

TEST_F(OdbcSqliteTypes, BooleansAreOneOrZero) {
    EXPECT_EQ(stored("BOOLEAN", "1"), "BOOL 1|\n");
    EXPECT_EQ(stored("BOOLEAN", "0"), "BOOL 0|\n");
    EXPECT_EQ(stored("BOOLEAN", "TRUE"), "BOOL 1|\n");
    EXPECT_EQ(stored("BOOLEAN", "-5"), "BOOL 1|\n");
    EXPECT_EQ(stored("BIT", "'true'"), "BOOL 1|\n");
    EXPECT_EQ(stored("BIT", "'No'"), "BOOL 0|\n");
}

TEST_F(OdbcSqliteTypes, DatesAndBytesHaveTheirTypeAlone) {
    EXPECT_EQ(stored("DATE", "'2026-11-20'"), "DATE|\n");
    EXPECT_EQ(stored("TIME", "'20:15:00'"), "DATE|\n");
    EXPECT_EQ(stored("DATETIME", "'2026-11-20 20:15:00'"), "DATE|\n");
    EXPECT_EQ(stored("BLOB", "x'0001FF'"), "BYTES|\n");
    EXPECT_EQ(stored("VARBINARY(8)", "x'00'"), "BYTES|\n");
}

TEST_F(OdbcSqliteTypes, NullIsNullInAColumnOfAnyType) {
    EXPECT_EQ(stored("INTEGER", "NULL"), "NULL|\n");
    EXPECT_EQ(stored("REAL", "NULL"), "NULL|\n");
    EXPECT_EQ(stored("TEXT", "NULL"), "NULL|\n");
    EXPECT_EQ(stored("BOOLEAN", "NULL"), "NULL|\n");
}

TEST_F(OdbcSqliteTypes, AValueOfAnotherTypeThanItsColumnIsNotLost) {
    EXPECT_EQ(stored("INTEGER", "'n/a'"), "BSTR n/a|\n");
    EXPECT_EQ(stored("INTEGER", "1.5"), "R8 1.5|\n");
    EXPECT_EQ(stored("INTEGER", "''"), "BSTR |\n");
    EXPECT_EQ(stored("INTEGER", "' 7'"), "I4 7|\n");  // SQLite itself stores a number
    EXPECT_EQ(stored("REAL", "'7 points'"), "BSTR 7 points|\n");
    EXPECT_EQ(stored("BOOLEAN", "'maybe'"), "BSTR maybe|\n");
}

TEST_F(OdbcSqliteTypes, TheFirstRecordTypesAnExpressionButDoesNotHarmTheOthers) {
    EXPECT_EQ(recordsOfQuery("SELECT 7 AS v UNION ALL SELECT 2.5 UNION ALL SELECT 'text' "
                             "UNION ALL SELECT NULL UNION ALL SELECT 99999999999"),
              "I4 7|\nR8 2.5|\nBSTR text|\nNULL|\nI8 99999999999|\n");
    EXPECT_EQ(recordsOfQuery("SELECT NULL AS v UNION ALL SELECT 7"), "NULL|\nBSTR 7|\n");
}

}  // namespace

}  // namespace intake
