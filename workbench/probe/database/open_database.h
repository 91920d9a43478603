#pragma once

#include "workbench/probe/database/Database.h"

namespace probe {

/// Opens the database that a connection string names, as the plugin would. Throws DatabaseFailure.
std::unique_ptr<Database> openDatabase(const std::string& connectionString, Deadline end);

/// What a connection string leads to, for people: a file, or driver, server and database. It shows
/// no secret; empty where the string cannot be read.
std::string placeOfDatabase(const std::string& connectionString);

}  // namespace probe
