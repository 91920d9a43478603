// What `explore` lists of databases in files.

#include <rapidjson/document.h>

#include "tests/sql/make_database.h"
#include "tests/workbench/cli/linux/ExplainTest.h"

namespace {

class ExploredDatabase : public ExplainTest {
protected:
    ExploredDatabase() {
        intake::makeDatabase(folder / "league.db",
                             "CREATE TABLE team (code TEXT, \"Full name\" TEXT, points INTEGER);"
                             "CREATE TABLE \"order\" (id INT, \"key\" TEXT);"
                             "CREATE VIEW best AS SELECT * FROM team;"
                             "INSERT INTO team VALUES ('HOL', 'Hollinbeck', 68);"
                             "INSERT INTO \"order\" VALUES (1, 'a');");
    }

    void expectExplored(std::vector<std::string> arguments, const std::string& text,
                        int status = 0) const {
        arguments.insert(arguments.begin(), "explore");
        const ChildResult result = run(arguments);
        EXPECT_EQ("\n" + masked(result.out + result.err), text);
        EXPECT_EQ(result.status, status);
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
    const ChildResult result = run({"explore", "league.db", "--limit", "2", "--out", "json"});
    rapidjson::Document json;
    json.Parse(result.out.c_str());
    ASSERT_TRUE(json.IsObject()) << result.out;
    EXPECT_EQ(json["entries"].Size(), 2U);
    EXPECT_GT(json["leftOut"].GetUint(), 0U);
    EXPECT_TRUE(json["entries"][0]["records"].IsNull());
}

TEST_F(ExploredDatabase, EachSettingThatIsListedLoads) {
    const ChildResult result = run({"explore", "league.db", "--out", "json"});
    rapidjson::Document json;
    json.Parse(result.out.c_str());
    ASSERT_TRUE(json.IsObject()) << result.out;
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
