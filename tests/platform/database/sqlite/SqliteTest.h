#pragma once

#include "tests/platform/database/DatabaseTest.h"

namespace intake {

/// A connection to an empty SQLite database, by SQLite's own library.
class SqliteTest : public DatabaseTest {
protected:
    SqliteTest() {
        directory_.write("test.db", "");  // which SQLite takes for a new database
        open("Driver=SQLite3;Database=test.db");
    }
};

}  // namespace intake
