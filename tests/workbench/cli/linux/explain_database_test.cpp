// What `explain` says of queries and their records, of databases in files.

#include "tests/workbench/cli/linux/ExplainedDatabase.h"

TEST_F(ExplainedDatabase, ThatLoadsHasATickAtEachStage) {
    expectExplained(of("SELECT * FROM team"), R"(
league.db: 3 records, # s
  ✓ settings
  ✓ address   league.db
  ✓ fetched   connected, # ms
  ✓ format    a database of SQLite
  ✓ selection SELECT * FROM team: 3 rows, 3 columns
  ✓ key       code
  ✓ rows      all 3
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedDatabase, ATableThatIsNotThereIsToldWithThoseThatAre) {
    expectExplained(of("SELECT * FROM teem"), R"(
league.db: not loaded, # s
  ✓ settings
  ✓ address   league.db
  ✓ fetched   connected, # ms
  ✓ format    a database of SQLite
  ✗ selection SELECT * FROM teem
                            ^^^^ No such table: teem. The database has: team, best.
              Correct "SQL Query" (query).
  – key, rows, script, store: not reached
  Try: --set 'query=SELECT * FROM team'   (3 records, checked)
)");
}

TEST_F(ExplainedDatabase, AColumnThatIsNotThereIsMendedTogetherWithTheKey) {
    expectExplained(of("SELECT nane FROM team", {"key=nane"}), R"(
league.db: not loaded, # s
  ✓ settings
  ✓ address   league.db
  ✓ fetched   connected, # ms
  ✓ format    a database of SQLite
  ✗ selection SELECT nane FROM team
                     ^^^^ No such column: nane. The tables of the query have: code, name, points.
              Correct "SQL Query" (query).
  – key, rows, script, store: not reached
  Try: --set 'query=SELECT name FROM team' --set key=name   (3 records, checked)
)");
}

TEST_F(ExplainedDatabase, AColumnIsMarkedBehindTheShortNameOfItsTable) {
    expectExplained(of("SELECT t.nane FROM team t", {"key=name"}), R"(
league.db: not loaded, # s
  ✓ settings
  ✓ address   league.db
  ✓ fetched   connected, # ms
  ✓ format    a database of SQLite
  ✗ selection SELECT t.nane FROM team t
                       ^^^^ No such column: t.nane. The tables of the query have: code, name, points.
              Correct "SQL Query" (query).
  – key, rows, script, store: not reached
  Try: --set 'query=SELECT t.name FROM team t'   (3 records, checked)
)");
}

TEST_F(ExplainedDatabase, NoColumnOfAnotherMeaningIsProposed) {
    expectExplained(of("SELECT code, wage FROM team"), R"(
league.db: not loaded, # s
  ✓ settings
  ✓ address   league.db
  ✓ fetched   connected, # ms
  ✓ format    a database of SQLite
  ✗ selection SELECT code, wage FROM team
                           ^^^^ No such column: wage. The tables of the query have: code, name, points.
              Correct "SQL Query" (query).
  – key, rows, script, store: not reached
)");
}

TEST_F(ExplainedDatabase, NoColumnIsProposedForAPartOfItsNameOrForAnotherNumber) {
    intake::makeDatabase(folder / "players.db",
                         "CREATE TABLE player (code, name, paid, possession, age, a, q1, score1);"
                         "INSERT INTO player VALUES ('HOL', 'Ada', 1, 2, 3, 4, 5, 6);");
    for (const std::string wrong : {"id", "pos", "e", "wage", "q4", "score3"}) {
        const ChildResult result = explain(of("SELECT code, " + wrong + " FROM player",
                                              {"connStr=Provider=SQLite;Data Source=players.db"}));
        EXPECT_NE(result.out.find("No such column: " + wrong + "."), std::string::npos)
            << result.out;
        EXPECT_EQ(result.out.find("Try:"), std::string::npos) << result.out;
    }
}

TEST_F(ExplainedDatabase, AKeyThatIsNoColumnIsTold) {
    expectExplained(of("SELECT name, points FROM team"), R"(
league.db: no records, # s
  ✓ settings
  ✓ address   league.db
  ✓ fetched   connected, # ms
  ✓ format    a database of SQLite
  ✓ selection SELECT name, points FROM team: 3 rows, 2 columns
  ✗ key       code
              None of the columns of the query is "code". They are: name, points.
              Set "Key" (key) to one of these, or add it to the query.
  – rows, script, store: not reached
  Try: --set key=name   (3 records, checked)
)");
}

TEST_F(ExplainedDatabase, KeysThatRepeatAreTold) {
    const Explained explained(
        explain(of("SELECT 'a' AS code, name FROM team"), {"--out", "json"}).out);
    EXPECT_TRUE(explained.isOk);
    EXPECT_EQ(explained.records, 1U);
    ASSERT_NE(explained.mended(), nullptr);
    EXPECT_EQ(explained.mended()->name, "key");
    EXPECT_EQ(explained.mended()->set, Settings{"key=name"});
    EXPECT_EQ(explained.mended()->records, 3U);
}

TEST_F(ExplainedDatabase, AQueryThatFindsNoRowIsFine) {
    expectExplained(of("SELECT * FROM team WHERE points > 100"), R"(
league.db: no records, # s
  ✓ settings
  ✓ address   league.db
  ✓ fetched   connected, # ms
  ✓ format    a database of SQLite
  ✓ selection SELECT * FROM team WHERE points > 100: 0 records: the query runs and finds no row; the source is fine
  ✓ rows      no row
  ✓ store
  – key, script: not looked at
)");
}

TEST_F(ExplainedDatabase, RowsBehindTheLastAreTold) {
    const Explained explained(
        explain(of("SELECT * FROM team", {"fromRow=7"}), {"--out", "json"}).out);
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_EQ(explained.failed()->name, "rows");
    EXPECT_EQ(explained.failed()->cause, "There are 3 rows, 0 to 2.");
    EXPECT_EQ(explained.failed()->records, 3U);
}

TEST_F(ExplainedDatabase, AWordThatIsMisspeltIsTold) {
    expectExplained(of("SELEC * FROM team"), R"(
league.db: no records, # s
  ✓ settings
  ✓ address   league.db
  ✓ fetched   connected, # ms
  ✓ format    a database of SQLite
  ✗ selection SELEC * FROM team
              ^^^^^ No query begins with this word.
              Correct "SQL Query" (query).
  – key, rows, script, store: not reached
  Try: --set 'query=SELECT * FROM team'   (3 records, checked)
)");
}

TEST_F(ExplainedDatabase, WhatIsWrongWithinAQueryIsTold) {
    const Explained explained(
        explain(of("SELECT * FROM team WHERE AND points"), {"--out", "json"}).out);
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_EQ(explained.failed()->name, "selection");
    EXPECT_EQ(explained.failed()->place, "AND");
    EXPECT_EQ(explained.failed()->cause, "Near \"AND\": syntax error.");
}

TEST_F(ExplainedDatabase, AStatementWithoutRecordsIsNotRun) {
    const std::string before = count();
    expectExplained(of("DELETE FROM team"), R"(
league.db: not loaded, # s
  ✓ settings
  ✓ address   league.db
  ✓ fetched   connected, # ms
  ✓ format    a database of SQLite
  ✗ selection DELETE FROM team
              DELETE gives no records, so nothing arrives. It was not run, since it writes.
              Set "SQL Query" (query) to a SELECT.
  – key, rows, script, store: not reached
)");
    EXPECT_EQ(count(), before);
}

TEST_F(ExplainedDatabase, AQueryThatMayWriteIsRunOnWishOnly) {
    const std::string query = "INSERT INTO team VALUES ('NEW', 'New', 0) RETURNING code";
    const std::string before = count();
    const ChildResult asked = explain(of(query));
    EXPECT_EQ(asked.status, 0);
    EXPECT_NE(asked.out.find("so it was not run"), std::string::npos) << asked.out;
    EXPECT_EQ(count(), before);
    const ChildResult run = explain(of(query), {"--allow-writes"});
    EXPECT_EQ(run.status, 0) << run.out;
    EXPECT_NE(run.out.find("league.db: 1 record, "), std::string::npos) << run.out;
    EXPECT_NE(count(), before);
}

TEST_F(ExplainedDatabase, WhatAQueryCallsIsNoWrite) {
    for (const char* const query :
         {"SELECT code, \"name\" FROM team -- DELETE FROM team; \n",
          "WITH \"insert\" AS (SELECT * FROM team) SELECT * FROM \"insert\" WHERE name <> 'DROP;';",
          "SELECT /* UPDATE */ code FROM [team] t, (SELECT max(points) AS m FROM team) b"}) {
        const ChildResult result = explain(of(query));
        EXPECT_EQ(result.status, 0) << result.out;
        EXPECT_NE(result.out.find("league.db: 3 records, "), std::string::npos) << result.out;
    }
}

TEST_F(ExplainedDatabase, AParameterWithoutAValueIsTold) {
    const Explained explained(
        explain(of("SELECT * FROM team WHERE code = :code"), {"--out", "json"}).out);
    ASSERT_NE(explained.failed(), nullptr);
    EXPECT_EQ(explained.failed()->name, "selection");
    EXPECT_EQ(explained.failed()->cause, "The query has a parameter without a value: :code.");
}

TEST_F(ExplainedDatabase, WhatAWriterLeftUnfinishedIsNoFault) {
    intake::makeDatabase(folder / "wal.db",
                         "PRAGMA journal_mode = WAL; CREATE TABLE team (code TEXT);"
                         "INSERT INTO team VALUES ('HOL');");
    const std::string connection = "connStr=Provider=SQLite;Data Source=wal.db";
    EXPECT_EQ(explain(of("SELECT * FROM team", {connection})).status, 0);
    EXPECT_EQ(run({"explore", "--set", "queryMode=SQL", "--set", connection}).status, 0);
    EXPECT_FALSE(std::filesystem::exists(folder / "wal.db-shm"));
    EXPECT_FALSE(std::filesystem::exists(folder / "wal.db-wal"));
}

TEST_F(ExplainedDatabase, RecordsOfASharedMemoryThatNothingDividesAreCounted) {
    expectExplained(of("SELECT * FROM team", {"mode=Shared Memory", "shmvar=Top"}), R"(
league.db: 3 records, # s
  ✓ settings
  ✓ address   league.db
  ✓ fetched   connected, # ms
  ✓ format    a database of SQLite
  ✓ selection SELECT * FROM team: 3 rows, 3 columns
  ✓ key       none is needed
  ✓ rows      all 3
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedDatabase, AKeyThatNamesNoStructureIsAWarning) {
    intake::makeDatabase(folder / "keys.db",
                         "CREATE TABLE t (id TEXT); INSERT INTO t VALUES ('ok'), ('a=b');");
    const Explained explained(
        explain(joined(of("SELECT * FROM t"), {"connStr=Provider=SQLite;Data Source=keys.db",
                                               "mode=DataStructure", "table=", "key=id"}),
                {"--out", "json"})
            .out);
    EXPECT_EQ(explained.stages[7].state, "warning");
    EXPECT_EQ(explained.stages[7].cause, "The key \"a=b\" cannot stand in a script as a name.");
}

TEST_F(ExplainedDatabase, AColumnThatComesTwiceIsAWarning) {
    const Explained explained(
        explain(of("SELECT code, name, name FROM team"), {"--out", "json"}).out);
    EXPECT_TRUE(explained.isOk);
    EXPECT_EQ(explained.stages[7].cause,
              "The name \"name\" comes twice in a record; the last value counts.");
}

TEST_F(ExplainedDatabase, NumbersThatAreTheSameInSixDigitsAreOneKey) {
    expectExplained(of("SELECT 1.00000001 AS code UNION ALL SELECT 1.00000002"), R"(
league.db: 1 record, # s
  ✓ settings
  ✓ address   league.db
  ✓ fetched   connected, # ms
  ✓ format    a database of SQLite
  ✓ selection SELECT 1.00000001 AS code UNION ALL SELECT 1.00000002: 2 rows, 1 column
  ! key       code
              The keys are not unique: 1 record of 2 takes the place of an earlier one with the same key: 1. 1 record is left.
              Set "Key" (key) to a column that differs from record to record, or "Field is a: " (mode) to DataArray.
  ✓ rows      all 2
  ✓ script
  ✓ store
  Try: --set mode=DataArray   (2 records, checked)
)");
}
