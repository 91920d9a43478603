// Which file is opened, and why one is not.

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

#include "tests/platform/database/sqlite/SqliteTest.h"
#include "tests/support/linux/next_handle.h"

namespace intake {

namespace {

class SqliteConnections : public SqliteTest {
protected:
    /// Why nothing is opened.
    std::string failureOf(const std::string& connectionString) {
        const PlatformError error = errorOf([&] { open(connectionString); });
        EXPECT_EQ(errorLines(), "80004005 " + error.description() + "\n");
        return error.description();
    }
};

TEST_F(SqliteConnections, ReadTheSameFileHoweverItIsNamed) {
    run("CREATE TABLE t AS SELECT 7 AS v");

    for (const std::string text :
         {"Provider=SQLite;Data Source=test.db", "provider=sqlite3.1;database=./test.db",
          "Driver=SQLite3;DBQ=test.db", "DRIVER={SQLite};Data Source=\"test.db\"",
          "Provider=MSDASQL;Extended Properties=\"Driver=SQLite3;Database=test.db\"",
          "Driver=SQLite3;Database=file:test.db?mode=ro"}) {
        open(text);
        EXPECT_EQ(recordsOfQuery("SELECT v FROM t"), "I8 7|\n") << text;
    }
}

TEST_F(SqliteConnections, ReadAFileOfAnyName) {
    for (const std::string name : {"Übertragung 🏆.db", "a;b}c'.db", "{x", "100%.db"}) {
        directory_.write(name, "");
        open("Driver=SQLite3;Database=\"" + name + "\"");
        run("CREATE TABLE t AS SELECT 7 AS v");
        EXPECT_EQ(recordsOfQuery("SELECT v FROM t"), "I8 7|\n") << name;
    }
}

TEST_F(SqliteConnections, MakeNoFile) {
    EXPECT_EQ(failureOf("Driver=SQLite3;Database=typo.db"),
              "The database \"typo.db\" cannot be opened: No such file or directory");
    EXPECT_EQ(failureOf("Provider=SQLite;Data Source=missing/test.db"),
              "The database \"missing/test.db\" cannot be opened: No such file or directory");
    EXPECT_FALSE(std::filesystem::exists("typo.db"));
}

TEST_F(SqliteConnections, OpenNothingButFiles) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    EXPECT_EQ(failureOf("Driver=SQLite3;Database=."),
              "The database \".\" cannot be opened: Is a directory");
    EXPECT_EQ(failureOf("Driver=SQLite3;Database=pipe"),
              "The database \"pipe\" cannot be opened: it is not a regular file");
}

TEST_F(SqliteConnections, SayOfAFileThatIsNone) {
    directory_.write("page.db", std::string(5000, 'x'));

    EXPECT_EQ(failureOf("Driver=SQLite3;Database=page.db"),
              "The database \"page.db\" cannot be opened: file is not a database");
}

TEST_F(SqliteConnections, CanBeOpenedAgainAfterAFailure) {
    errorOf([&] { open("Driver=SQLite3;Database=typo.db"); });
    connection_->open("Driver=SQLite3;Database=test.db");

    EXPECT_EQ(recordsOfQuery("SELECT 1"), "I8 1|\n");
}

TEST_F(SqliteConnections, CloseTheirFile) {
    run("CREATE TABLE t (v)");
    const int whileOpen = nextHandle();

    connection_.reset();

    EXPECT_LT(nextHandle(), whileOpen);
}

/// Closing a file once takes all locks away that the process holds on it, whoever took them.
TEST_F(SqliteConnections, LeaveTheLocksOfOthersInTheSameProcessAlone) {
    run("CREATE TABLE t (v)");
    run("BEGIN EXCLUSIVE");

    ProviderConnection other(endMark_);
    errorOf([&] { other.open("Driver=SQLite3;Database=test.db;Timeout=0"); });

    EXPECT_NE(system("sqlite3 test.db 'INSERT INTO t VALUES (1)' 2>error.txt"), 0);
    std::ifstream error("error.txt");
    const std::string text{std::istreambuf_iterator(error), {}};
    EXPECT_NE(text.find("locked"), std::string::npos) << text;
}

TEST_F(SqliteConnections, SayWhichOptionsMeanNothing) {
    open("Driver=SQLite3;Database=test.db;LongNames=1;Timeout=5;UID=x;Persist Security Info=no");

    EXPECT_EQ(connection_->warnings(),
              (std::vector<std::string>{
                  "SQLite has no option \"LongNames\"; the connection string's is ignored.",
                  "SQLite has no option \"UID\"; the connection string's is ignored."}));
}

TEST_F(SqliteConnections, WithoutAFileAreRefused) {
    EXPECT_EQ(errorOf([&] { open("Driver=SQLite3;UID=x"); }).description(),
              "The connection string names no \"Data Source\"");
    EXPECT_EQ(errorOf([&] { open("Driver=SQLite3;Database=a;Timeout=1s"); }).description(),
              "\"Timeout\" is no number of milliseconds: 1s");
}

}  // namespace

}  // namespace intake
