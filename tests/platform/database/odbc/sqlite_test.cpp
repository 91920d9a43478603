// Connections and records, by SQLite's ODBC driver, which needs no server.

#include <clocale>

#include "tests/platform/database/odbc/OdbcSqliteTest.h"
#include "tests/support/linux/next_handle.h"

namespace intake {

namespace {

using OdbcSqlite = OdbcSqliteTest;

std::string message(const std::string& what) {
    return "80004005 " + what + "\n";
}

TEST_F(OdbcSqlite, RecordsAreReadInTheirOrder) {
    run("CREATE TABLE clubs (name TEXT, points INTEGER)");
    run("INSERT INTO clubs VALUES ('Rovers', 9), ('City', 12), ('United', NULL)");

    const auto records = connection_->openRecordset("SELECT * FROM clubs ORDER BY points DESC");

    EXPECT_EQ(namesOf(*records), "name|points|");
    EXPECT_EQ(recordsOf(*records), "BSTR City|I4 12|\nBSTR Rovers|I4 9|\nBSTR United|NULL|\n");
    EXPECT_TRUE(connection_->errors().empty());
}

TEST_F(OdbcSqlite, AConnectionThatGoesClosesItsDatabase) {
    run("CREATE TABLE clubs (name TEXT)");
    const int whileOpen = nextHandle();

    connection_.reset();

    EXPECT_LT(nextHandle(), whileOpen);
}

TEST_F(OdbcSqlite, AValueCanBeAskedForAgainAndInAnyOrder) {
    const auto records = connection_->openRecordset("SELECT 'a' AS x, 'b' AS y");
    FieldValue value;

    records->moveFirst();
    for (const auto& [field, text] : {std::pair{1, "b"}, {0, "a"}, {1, "b"}}) {
        EXPECT_TRUE(records->value(static_cast<size_t>(field), value));
        EXPECT_EQ(value.text, text);
    }
    EXPECT_FALSE(records->value(2, value));
}

TEST_F(OdbcSqlite, AResultWithoutRecordsHasItsFields) {
    run("CREATE TABLE clubs (name TEXT, points INTEGER)");

    const auto records = connection_->openRecordset("SELECT * FROM clubs");

    EXPECT_TRUE(records->atEnd());
    EXPECT_EQ(namesOf(*records), "name|points|");
}

TEST_F(OdbcSqlite, FieldsAreFoundByNameWithoutRegardToCase) {
    const auto records = connection_->openRecordset("SELECT 1 AS Name, 2 AS Ünï, 3 AS NAME");

    EXPECT_EQ(records->findField("naME"), 0U);
    EXPECT_EQ(records->findField("Ünï"), 1U);
    EXPECT_EQ(records->findField("üNÏ"), 1U);
    EXPECT_EQ(records->findField("nam"), std::nullopt);
    EXPECT_EQ(records->findField(""), std::nullopt);
}

TEST_F(OdbcSqlite, FieldNamesAreThoseOfTheQuery) {
    run("CREATE TABLE clubs (name TEXT, points INTEGER)");

    EXPECT_EQ(namesOfQuery("SELECT name AS \"Goals p.90\", clubs.points, name, 1.5, count(*), "
                           "'🏆' AS \"Größe 🏆\" FROM clubs"),
              "Goals p.90|points|name|1.5|count(*)|Größe 🏆|");
    EXPECT_EQ(namesOfQuery("SELECT a.name, b.name FROM clubs a, clubs b"), "name|name|");
}

TEST_F(OdbcSqlite, ALongFieldNameIsWhole) {
    const std::string name(500, 'n');

    EXPECT_EQ(namesOfQuery("SELECT 1 AS " + name), name + "|");
}

TEST_F(OdbcSqlite, TextsOfAnyLengthAreWhole) {
    const std::string unit = "ä🏆x";  // 7 bytes
    std::string query;
    std::string expected;
    for (const size_t length : {0, 1, 18, 19, 20, 1000, 1, 1170, 1171, 5000, 2}) {
        std::string text;
        for (size_t i = 0; i < length; ++i) {
            text += unit;
        }
        query += (query.empty() ? "SELECT '" : " UNION ALL SELECT '") + text + "' AS v, 7";
        expected += "BSTR " + text + "|I4 7|\n";
    }

    EXPECT_EQ(recordsOfQuery(query), expected);
}

TEST_F(OdbcSqlite, ATextAroundTheSizeOfABufferIsWhole) {
    for (const size_t length : {127, 128, 129, 8191, 8192, 8193}) {
        const std::string text(length, 't');

        EXPECT_EQ(recordsOfQuery("SELECT '" + text + "' AS v"), "BSTR " + text + "|\n");
    }
}

TEST_F(OdbcSqlite, ATextOf10MillionBytesIsWhole) {
    EXPECT_EQ(recordsOfQuery("SELECT printf('%.*c', 10000000, 'x') AS v, 'next' AS w "
                             "UNION ALL SELECT 'short', 'last'"),
              "BSTR " + std::string(10'000'000, 'x') + "|BSTR next|\nBSTR short|BSTR last|\n");
}

TEST_F(OdbcSqlite, ManyFieldsAreRead) {
    std::string query = "SELECT 0";
    std::string expected = "I4 0|";
    for (int field = 1; field < 500; ++field) {
        query += ", " + std::to_string(field);
        expected += "I4 " + std::to_string(field) + "|";
    }

    EXPECT_EQ(recordsOfQuery(query), expected + "\n");
}

TEST_F(OdbcSqlite, OneConnectionHasSeveralResultsOneAfterTheOther) {
    EXPECT_EQ(recordsOfQuery("SELECT 1"), "I4 1|\n");
    EXPECT_EQ(recordsOfQuery("SELECT 2"), "I4 2|\n");
}

TEST_F(OdbcSqlite, TheQueryMayBeOfAnyLanguage) {
    run("CREATE TABLE \"Größen 🏆\" (v TEXT)");
    run("INSERT INTO \"Größen 🏆\" VALUES ('größer'), ('日本'), ('🏆')");

    EXPECT_EQ(recordsOfQuery("SELECT v FROM \"Größen 🏆\" WHERE v IN ('日本', '🏆')"),
              "BSTR 日本|\nBSTR 🏆|\n");
}

TEST_F(OdbcSqlite, TheFileMayHaveAnyName) {
    open("DSN=test;Database=Übertragung 🏆.db");
    run("CREATE TABLE t (v)");

    EXPECT_TRUE(std::filesystem::exists("Übertragung 🏆.db"));
}

TEST_F(OdbcSqlite, AStatementWithoutRecordsFailsButIsRun) {
    const PlatformError error =
        errorOf([&] { connection_->openRecordset("CREATE TABLE t AS SELECT 7 AS v"); });

    EXPECT_EQ(error.code(), NO_RECORDS);
    EXPECT_EQ(error.meaning(), "Operation is not allowed when the object is closed.");
    EXPECT_EQ(error.source(), "ODBC");
    EXPECT_EQ(error.description(), "The statement does not return records.");
    EXPECT_TRUE(connection_->errors().empty());
    EXPECT_EQ(recordsOfQuery("SELECT v FROM t"), "I4 7|\n");
}

TEST_F(OdbcSqlite, AWrongQueryFailsWithWhatTheDatabaseSays) {
    const PlatformError error = errorOf([&] { connection_->openRecordset("SELEC 1"); });

    EXPECT_EQ(error.code(), 0x80004005);
    EXPECT_EQ(error.meaning(), "Unspecified error");
    EXPECT_EQ(error.source(), "ODBC");
    EXPECT_EQ(error.description(), "[SQLite]near \"SELEC\": syntax error (1)");
    EXPECT_EQ(errorLines(), message("[SQLite]near \"SELEC\": syntax error (1)"));
}

TEST_F(OdbcSqlite, AnEmptyQueryFails) {
    for (const char* const query : {"", " \r\n", ";"}) {
        const PlatformError error = errorOf([&] { connection_->openRecordset(query); });
        EXPECT_EQ(error.code(), 0x80040E0C);
        EXPECT_EQ(error.description(), "The query is empty.");
        EXPECT_TRUE(connection_->errors().empty());
    }
}

TEST_F(OdbcSqlite, AnUnknownTableIsNamed) {
    errorOf([&] { connection_->openRecordset("SELECT * FROM Größen"); });

    EXPECT_EQ(errorLines(), message("[SQLite]no such table: Größen (1)"));
}

TEST_F(OdbcSqlite, ALongErrorIsWhole) {
    const std::string table(400, 't');

    errorOf([&] { connection_->openRecordset("SELECT * FROM " + table); });

    EXPECT_EQ(errorLines(), message("[SQLite]no such table: " + table + " (1)"));
}

TEST_F(OdbcSqlite, AFailureOfTheFirstRecordIsTheQuerys) {
    open("DSN=test;StepAPI=1");

    errorOf([&] { connection_->openRecordset("SELECT abs(-9223372036854775808)"); });

    EXPECT_EQ(errorLines(), message("[SQLite]integer overflow (1)"));
}

TEST_F(OdbcSqlite, AFailureOfALaterRecordEndsTheRecords) {
    open("DSN=test;StepAPI=1");
    const auto records =
        connection_->openRecordset("SELECT 7 AS v UNION ALL SELECT abs(-9223372036854775808)");

    EXPECT_EQ(errorOf([&] { records->moveNext(); }).description(), "[SQLite]integer overflow (1)");
}

TEST_F(OdbcSqlite, AQueryAfterAFailureHasNoErrors) {
    errorOf([&] { connection_->openRecordset("SELEC 1"); });

    EXPECT_EQ(recordsOfQuery("SELECT 1"), "I4 1|\n");
    EXPECT_EQ(errorLines(), "");
}

TEST_F(OdbcSqlite, AMissingDriverIsNamedAndNoPasswordIs) {
    const PlatformError error =
        errorOf([&] { open("Server=db;DRIVER = {Nobody's} ;Uid=designer;Pwd=s3cret"); });

    EXPECT_EQ(error.code(), 0x80004005);
    EXPECT_EQ(error.description(),
              "The ODBC driver \"Nobody's\" cannot be loaded: Nobody's: cannot open shared object "
              "file: No such file or directory");
    EXPECT_EQ(errorLines(), "");
}

TEST_F(OdbcSqlite, ADataSourceOfTheUserIsOpened) {
    run("CREATE TABLE t AS SELECT 7 AS v");
    directory_.write("odbc.ini", "[league]\nDriver=SQLite3\nDatabase=test.db\n");

    open("dsn=league");

    EXPECT_EQ(recordsOfQuery("SELECT v FROM t"), "I4 7|\n");
}

TEST_F(OdbcSqlite, FieldNamesOfADataSourceAreThoseOfTheQueryUnlessItWantsOthers) {
    run("CREATE TABLE clubs (name TEXT)");
    const std::string league = "[league]\nDriver=SQLite3\nDatabase=test.db\n";
    directory_.write("odbc.ini",
                     league + "[short]\nDriver=SQLite3\nDatabase=test.db\nLongNames=0\n");
    const std::string query = "SELECT a.name AS \"Goals p.90\" FROM clubs a, clubs b";

    open("DSN=league");
    EXPECT_EQ(namesOfQuery(query), "Goals p.90|");
    for (const char* const shortNames : {"DSN=short", "DSN=league;LongNames=0"}) {
        open(shortNames);
        EXPECT_EQ(namesOfQuery(query), "90|");
    }
}

TEST_F(OdbcSqlite, AnUnknownDataSourceFails) {
    errorOf([&] { open("DSN=nowhere;PWD=s3cret"); });

    EXPECT_EQ(errorLines(), message("[unixODBC][Driver Manager]Data source name not found and no "
                                    "default driver specified"));
}

TEST_F(OdbcSqlite, ADatabaseInAFolderThatIsMissingFails) {
    errorOf([&] { open("DSN=test;Database=missing/test.db"); });

    EXPECT_EQ(errorLines(), message("[SQLite]connect failed"));
}

TEST_F(OdbcSqlite, AConnectionThatFailedCanBeOpenedAgain) {
    errorOf([&] { open("DSN=test;Database=missing/test.db"); });
    connection_->open("DSN=test");

    EXPECT_EQ(recordsOfQuery("SELECT 1"), "I4 1|\n");
}

TEST_F(OdbcSqlite, NothingIsPrintedAndTheLocaleStays) {
    const std::string locale = std::setlocale(LC_ALL, nullptr);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();

    recordsOfQuery("SELECT 1.5");
    errorOf([&] { connection_->openRecordset("SELEC 1"); });
    errorOf([&] { ProviderConnection(endMark_).open("Driver=Nobody's"); });
    connection_.reset();

    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), locale);
    EXPECT_EQ(uselocale(nullptr), LC_GLOBAL_LOCALE);
}

}  // namespace

}  // namespace intake
