// What `explain` says of connections to databases: files, locks, drivers and lateness.

#include <sqlite3.h>

#include "tests/workbench/cli/linux/ExplainedDatabase.h"

namespace {

/// A transaction of another program that lets nobody else in.
class Lock {
public:
    explicit Lock(const std::filesystem::path& file) {
        sqlite3_open(file.c_str(), &database_);
        sqlite3_exec(database_, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
    }
    ~Lock() { sqlite3_close(database_); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    sqlite3* database_ = nullptr;
};

}  // namespace

TEST_F(ExplainedDatabase, WhatCannotBeOpenedAtAllHasALadder) {
    const ChildResult result =
        explain(of("SELECT 1", {"connStr=Provider=SQLite;Data Source=file:absent.db?mode=rwc"}));
    EXPECT_EQ(result.status, 1) << result.err;
    EXPECT_NE(result.out.find("✗ format"), std::string::npos) << result.out;
}

TEST_F(ExplainedDatabase, APasswordWithinExtendedPropertiesIsHidden) {
    const ChildResult result =
        explain(of("SELECT 1", {"connStr=Provider=MSDASQL;Extended Properties=\"Driver=PostgreSQL "
                                "Unicod;Server=127.0.0.1;Port=1;Uid=designer;Pwd=s3cret\""}),
                {"--out", "json"});
    EXPECT_EQ((result.out + result.err).find("s3cret"), std::string::npos) << result.out;
}

TEST_F(ExplainedDatabase, AnEmptyQueryIsTold) {
    for (const char* const query : {"", " ; ", "-- nothing"}) {
        const Explained explained(explain(of(query), {"--out", "json"}).out);
        ASSERT_NE(explained.failed(), nullptr);
        EXPECT_EQ(explained.failed()->cause, "\"SQL Query\" (query) is empty.");
    }
}

TEST_F(ExplainedDatabase, AFileThatIsNotThereIsToldWithItsPlace) {
    expectExplained(of("SELECT 1", {"connStr=Provider=SQLite;Data Source=legue.db"}), R"(
legue.db: no records, # s
  ✓ settings
  ✗ address   legue.db
              The database is not there; it was looked for as FOLDER/legue.db.
              Correct the file in "Connection String" (connStr). A path that does not begin at the root starts at the folder in which the host was started.
  – fetched, format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedDatabase, AFileBesideTheSceneIsProposed) {
    std::filesystem::create_directory(folder / "show");
    std::filesystem::rename(folder / "league.db", folder / "show" / "league.db");
    write("show/scene.json",
          R"({"instances": [{"name": "table", "parameters": {"queryMode": 1, "mode": 0,
             "connStr": "Provider=SQLite;Data Source=league.db", "table": "T", "key": "code",
             "query": "SELECT * FROM team"}}]})");
    const Explained explained(
        run({"explain", "--scene", "show/scene.json", "--instance", "table", "--out", "json"}).out);
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_EQ(explained.failed()->name, "address");
    EXPECT_EQ(explained.failed()->set,
              Settings{"connStr=Provider=SQLite;Data Source=show/league.db"});
    EXPECT_EQ(explained.failed()->records, 3U);
}

TEST_F(ExplainedDatabase, AFileThatIsNoDatabaseIsTold) {
    write("league.db", "code,name\nHOL,Hollinbeck and more than there is room for in a header\n");
    const Explained explained(explain(of("SELECT * FROM team"), {"--out", "json"}).out);
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_EQ(explained.failed()->name, "format");
    EXPECT_EQ(explained.failed()->cause,
              "The file is no whole database of SQLite: file is not a database.");
}

TEST_F(ExplainedDatabase, AFileThatIsBrokenIsTold) {
    std::filesystem::resize_file(folder / "league.db", 4096);
    const Explained explained(explain(of("SELECT * FROM team"), {"--out", "json"}).out);
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_NE(explained.failed()->cause.find("malformed"), std::string::npos)
        << explained.failed()->cause;
}

TEST_F(ExplainedDatabase, AFileThatIsLockedIsTold) {
    const Lock lock(folder / "league.db");
    const Explained explained(
        explain(
            of("SELECT * FROM team", {"connStr=Provider=SQLite;Data Source=league.db;Timeout=100"}),
            {"--out", "json"})
            .out);
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_EQ(explained.failed()->name, "fetched");
    EXPECT_EQ(explained.failed()->seen, "locked");
    EXPECT_EQ(explained.failed()->cause, "It is locked: database is locked.");
}

TEST_F(ExplainedDatabase, AFileThatMayOnlyBeReadIsRead) {
    std::filesystem::permissions(folder / "league.db", std::filesystem::perms::owner_read);
    EXPECT_EQ(explain(of("SELECT * FROM team")).status, 0);
}

TEST_F(ExplainedDatabase, AQueryThatTakesTooLongIsLate) {
    const ChildResult result =
        explain(of("WITH RECURSIVE c(code) AS (SELECT 1 UNION ALL SELECT code + 1 FROM c) "
                   "SELECT max(code) FROM c"),
                {"--timeout", "0.5"});
    EXPECT_EQ(result.status, 3);
    EXPECT_NE(result.out.find("It gave no answer in time."), std::string::npos) << result.out;
}

TEST_F(ExplainedDatabase, AConnectionStringThatCannotBeReadIsToldWithoutItsSecrets) {
    const ChildResult result = explain(of("SELECT 1", {"connStr=Pwd=s3cret;nonsense"}));
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.out.find("✗ settings"), std::string::npos) << result.out;
    EXPECT_EQ((result.out + result.err).find("s3cret"), std::string::npos) << result.out;
}

TEST_F(ExplainedDatabase, AProviderThatIsNotThereIsTold) {
    const Explained explained(
        explain(of("SELECT 1", {"connStr=Provider=Nowhere;Data Source=x"}), {"--out", "json"}).out);
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_EQ(explained.failed()->name, "address");
    EXPECT_TRUE(explained.failed()->cause.starts_with("There is no provider \"Nowhere\""));
}

TEST_F(ExplainedDatabase, ADriverThatIsNotThereIsToldWithThoseThatAre) {
    const Explained explained(
        explain(of("SELECT 1", {"connStr=Driver=PostgreSQL Unicde;Server=x"}), {"--out", "json"})
            .out);
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_EQ(explained.failed()->name, "address");
    EXPECT_TRUE(explained.failed()->cause.starts_with(
        "There is no ODBC driver \"PostgreSQL Unicde\" on this machine. There are: "));
    EXPECT_NE(explained.failed()->cause.find("MariaDB Unicode"), std::string::npos);
}

TEST_F(ExplainedDatabase, ADataSourceThatIsNotKnownIsTold) {
    const Explained explained(
        explain(of("SELECT 1", {"connStr=DSN=league"}), {"--out", "json"}).out);
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_EQ(explained.failed()->name, "address");
    EXPECT_TRUE(explained.failed()->cause.starts_with(
        "No data source (DSN) \"league\" is set up on this machine."));
}
