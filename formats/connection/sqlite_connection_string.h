#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "formats/connection/connection_string.h"

namespace intake {

/// How an SQLite database is opened.
struct SqliteSettings {
    std::string path;
    std::chrono::milliseconds lockTime;  // how long a locked database is waited for
    std::vector<std::string> ignored;    // the keys that mean nothing to SQLite
};

/// What a connection string of ADO says of an SQLite database: one whose provider is SQLite's, or
/// whose ODBC driver is called so. Nothing for all others, also for a data source and for a driver
/// that is given as a library. Throws ConnectionStringError.
std::optional<SqliteSettings> sqliteSettings(const ConnectionString& connection);

/// A connection string for a file of SQLite.
std::string sqliteConnectionString(const std::string& file);

}  // namespace intake
