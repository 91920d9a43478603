#pragma once

#include <string>
#include <vector>

#include "tests/sql/make_database.h"
#include "tests/workbench/cli/Workbench.h"

namespace intake {

/// The workbench in a folder with a small database, league.db.
struct SqlWorkbench : Workbench {
    SqlWorkbench() {
        makeDatabase(folder / "league.db",
                     "CREATE TABLE team (code TEXT, name TEXT, points INTEGER, average REAL);"
                     "INSERT INTO team VALUES ('HOL', 'Hollinbeck', 68, 2.5185185),"
                     "('ESK', 'Eskerfold', 51, NULL), ('KEL', 'Kelder \"Town\"', -1, 0.5);");
    }

    /// Loads a query of league.db.
    ChildResult query(const std::string& sql, std::vector<std::string> settings) {
        settings.insert(settings.begin(),
                        {"queryMode=SQL", "connStr=Provider=SQLite;Data Source=league.db",
                         "query=" + sql, "table=T"});
        return load(settings, {"--out", "script"});
    }
};

}  // namespace intake
