#pragma once

#include "tests/http/support/EnvironmentVariable.h"
#include "tests/platform/database/DatabaseTest.h"

namespace intake {

/// A connection to an empty SQLite database, by its ODBC driver: as the data source "test".
class OdbcSqliteTest : public DatabaseTest {
protected:
    OdbcSqliteTest() : sources_("ODBCINI", "odbc.ini") {
        directory_.write("odbc.ini", "[test]\nDriver=SQLite3\nDatabase=test.db\n");
        open("DSN=test");
    }

    EnvironmentVariable sources_;
};

}  // namespace intake
