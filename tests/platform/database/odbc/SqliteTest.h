#pragma once

#include "tests/platform/database/odbc/OdbcTest.h"

namespace intake {

/// A connection to an empty SQLite database.
class SqliteTest : public OdbcTest {
protected:
    SqliteTest() { open("Driver=SQLite3;Database=test.db"); }
};

}  // namespace intake
