// What `explore` lists of databases in files.

#include "tests/http/support/EnvironmentVariable.h"
#include "tests/sql/make_database.h"
#include "tests/workbench/cli/linux/ExploreTest.h"

namespace {

class ExploredDatabase : public ExploreTest {
protected:
    ExploredDatabase() {
        intake::makeDatabase(folder / "league.db",
                             "CREATE TABLE team (code TEXT, \"Full name\" TEXT, points INTEGER);"
                             "CREATE TABLE \"order\" (id INT, \"key\" TEXT);"
                             "CREATE VIEW best AS SELECT * FROM team;"
                             "INSERT INTO team VALUES ('HOL', 'Hollinbeck', 68);"
                             "INSERT INTO \"order\" VALUES (1, 'a');");
    }
};

}  // namespace

TEST_F(ExploredDatabase, TablesAndColumnsAreListedWithTheQueriesThatReadThem) {
    expectExplored({"league.db"}, R"(
league.db is a database of SQLite
records  name         kind     first value  select it by
         team         table                 --set 'query=SELECT * FROM team'
           code       TEXT                  --set 'query=SELECT code FROM team'
           Full name  TEXT                  --set 'query=SELECT "Full name" FROM team'
           points     INTEGER               --set 'query=SELECT points FROM team'
         order        table                 --set 'query=SELECT * FROM "order"'
           id         INT                   --set 'query=SELECT id FROM "order"'
           key        TEXT                  --set 'query=SELECT "key" FROM "order"'
         best         view                  --set 'query=SELECT * FROM best'
           code       TEXT                  --set 'query=SELECT code FROM best'
           Full name  TEXT                  --set 'query=SELECT "Full name" FROM best'
           points     INTEGER               --set 'query=SELECT points FROM best'

Load one, for example: intake-workbench load league.db --set mode=DataArray --set 'query=SELECT * FROM team'
)");
}

TEST_F(ExploredDatabase, OneTableIsListedByItsPlace) {
    expectExplored({"--set", "queryMode=SQL", "--set",
                    "connStr=Provider=SQLite;Data Source=league.db", "--at", "ORDER"},
                   R"(
league.db is a database of SQLite
records  name   kind   first value  select it by
         order  table               --set 'query=SELECT * FROM "order"'
           id   INT                 --set 'query=SELECT id FROM "order"'
           key  TEXT                --set 'query=SELECT "key" FROM "order"'

Load one, for example: intake-workbench load --set queryMode=SQL --set 'connStr=Provider=SQLite;Data Source=league.db' --set mode=DataArray --set 'query=SELECT * FROM "order"'
)");
}

TEST_F(ExploredDatabase, NamesAreSearched) {
    expectExplored({"league.db", "--find", "FULL"}, R"(
league.db is a database of SQLite
records  name         kind  first value  select it by
           Full name  TEXT               --set 'query=SELECT "Full name" FROM team'
           Full name  TEXT               --set 'query=SELECT "Full name" FROM best'

Load one, for example: intake-workbench load league.db --set mode=DataArray --set 'query=SELECT "Full name" FROM team'
)");
}

TEST_F(ExploredDatabase, NoMoreIsListedThanIsWanted) {
    const rapidjson::Document json = explored({"league.db", "--limit", "2"});
    EXPECT_EQ(json["entries"].Size(), 2U);
    EXPECT_GT(json["leftOut"].GetUint(), 0U);
    EXPECT_TRUE(json["entries"][0]["records"].IsNull());
}

TEST_F(ExploredDatabase, EachSettingThatIsListedLoads) {
    const rapidjson::Document json = explored({"league.db"});
    for (const auto& entry : json["entries"].GetArray()) {
        const std::string query = entry["set"]["query"].GetString();
        const ChildResult loaded =
            run({"load", "league.db", "--set", "mode=DataArray", "--set", "table=T", "--set",
                 "query=" + query, "--expect-records", "1"});
        EXPECT_EQ(loaded.status, 0) << query << loaded.err;
    }
}

TEST_F(ExploredDatabase, ATableThatIsNotThereIsSaid) {
    expectExplored({"league.db", "--at", "teams"}, R"(
league.db has no table "teams", but team, order, best.
)",
                   1);
}

TEST_F(ExploredDatabase, WhatCannotBeOpenedIsSaid) {
    expectExplored(
        {"--set", "queryMode=SQL", "--set", "connStr=Provider=SQLite;Data Source=legue.db"},
        R"(
legue.db: The database is not there; it was looked for as FOLDER/legue.db. Correct the file in "Connection String" (connStr). A path that does not begin at the root starts at the folder in which the host was started.
)",
        1);
}

TEST_F(ExploredDatabase, TablesAndColumnsAreListedPageByPage) {
    EXPECT_EQ(pageOf({"league.db", "--limit", "3", "--from", "7"}), "best, code, Full name of 11");
    EXPECT_EQ(pageOf({"league.db", "--at", "team", "--limit", "2", "--from", "1"}),
              "code, Full name of 4");
    EXPECT_EQ(pageOf({"league.db", "--limit", "1"}), "team of more");
}

TEST_F(ExploredDatabase, ATableIsPreviewedWithTheColumnsOfItsPage) {
    EXPECT_EQ(previewOf({"league.db"}), "none");
    EXPECT_EQ(previewOf({"league.db", "--at", "team"}), R"(
code|Full name|points
HOL|Hollinbeck|68
0)");
    EXPECT_EQ(previewOf({"league.db", "--at", "best", "--from", "3", "--limit", "1"}), R"(
points
68
0)");
    EXPECT_EQ(previewOf({"league.db", "--at", "order", "--limit", "0"}), "\n0");
}

TEST_F(ExploredDatabase, NoRowsAreReadWhereTheDatabaseMayNotRefuseToWrite) {
    write("odbc.ini",
          "[league]\nDriver=SQLite3\nDatabase=" + (folder / "league.db").string() + "\n");
    const intake::EnvironmentVariable sources("ODBCINI", (folder / "odbc.ini").string());
    const rapidjson::Document json = explored(
        {"--set", "queryMode=SQL", "--set", "connStr=DSN=league", "--at", "team", "--count-rows"});
    EXPECT_FALSE(json.HasMember("preview"));
    ASSERT_EQ(json["entries"].Size(), 4U);
    EXPECT_TRUE(json["entries"][0]["records"].IsNull());
}

TEST_F(ExploredDatabase, AsManyRowsArePreviewedAsAScreenShows) {
    intake::makeDatabase(folder / "many.db",
                         "CREATE TABLE n (i INT); INSERT INTO n WITH RECURSIVE c(x) AS (SELECT 1 "
                         "UNION ALL SELECT x + 1 FROM c WHERE x < 101) SELECT x FROM c;");
    const rapidjson::Document json = explored({"many.db", "--at", "n"});
    EXPECT_EQ(json["preview"]["rows"].Size(), 100U);
    EXPECT_TRUE(json["preview"]["leftOut"].IsNull());
}

TEST_F(ExploredDatabase, RowsAreCountedWhereThatIsWishedFor) {
    expectExplored({"league.db", "--at", "team", "--count-rows"}, R"(
league.db is a database of SQLite
records  name         kind     first value  select it by
      1  team         table                 --set 'query=SELECT * FROM team'
           code       TEXT                  --set 'query=SELECT code FROM team'
           Full name  TEXT                  --set 'query=SELECT "Full name" FROM team'
           points     INTEGER               --set 'query=SELECT points FROM team'

Load one, for example: intake-workbench load league.db --set mode=DataArray --set 'query=SELECT code FROM team'
)");
}

TEST_F(ExploredDatabase, TheJsonFormTellsTablesFromViewsAndNamesKeys) {
    EXPECT_EQ(outlineOf({"league.db", "--at", "best"}), R"(
view best
.column code
.column Full name
.column points)");
    const rapidjson::Document json = explored({"league.db", "--at", "team", "--from", "2"});
    EXPECT_STREQ(json["entries"][0]["key"].GetString(), "Full name");
}

TEST_F(ExploredDatabase, TheJsonFormNamesTheConnectionStringOfAFile) {
    const rapidjson::Document json = explored({"league.db"});
    EXPECT_STREQ(json["queryMode"].GetString(), "SQL");
    EXPECT_STREQ(json["connStr"].GetString(), "Provider=SQLite;Data Source=league.db");
}

TEST_F(ExploredDatabase, ATableMayHaveAQuoteInItsName) {
    intake::makeDatabase(folder / "quote.db", "CREATE TABLE \"o'k\" (id INT);");
    expectExplored({"quote.db"}, R"(
quote.db is a database of SQLite
records  name  kind   first value  select it by
         o'k   table               --set 'query=SELECT * FROM "o'\''k"'
           id  INT                 --set 'query=SELECT id FROM "o'\''k"'

Load one, for example: intake-workbench load quote.db --set mode=DataArray --set 'query=SELECT * FROM "o'\''k"'
)");
}
