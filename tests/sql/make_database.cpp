#include "tests/sql/make_database.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace intake {

void makeDatabase(const std::filesystem::path& file, const std::string& statements) {
    sqlite3* database = nullptr;
    EXPECT_EQ(sqlite3_open(file.c_str(), &database), SQLITE_OK) << file;
    EXPECT_EQ(sqlite3_exec(database, statements.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database);
    sqlite3_close(database);
}

}  // namespace intake
