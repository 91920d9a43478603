#pragma once

#include <string>

#include "tests/sql/make_database.h"
#include "tests/workbench/cli/linux/ExplainTest.h"

/// What is said of league.db, a database of three teams.
class ExplainedDatabase : public ExplainTest {
protected:
    static constexpr const char* teams =
        "CREATE TABLE team (code TEXT, name TEXT, points INTEGER);"
        "CREATE VIEW best AS SELECT * FROM team WHERE points > 50;"
        "INSERT INTO team VALUES ('HOL', 'Hollinbeck', 68), ('ESK', 'Eskerfold', 51),"
        "('KEL', 'Kelder', -1);";

    ExplainedDatabase() { intake::makeDatabase(folder / "league.db", teams); }

    /// Of a query of league.db, with more settings behind it.
    static Settings of(const std::string& query, const Settings& more = {}) {
        return joined({"queryMode=SQL", "connStr=Provider=SQLite;Data Source=league.db",
                       "query=" + query, "mode=DataTable", "table=T", "key=code"},
                      more);
    }

    std::string count() const {
        return load(of("SELECT count(*) AS code FROM team"), {"--out", "script"}).out;
    }
};
