#pragma once

#include <string>

#include "workbench/probe/database/Database.h"

namespace probe {

/// A name as a query writes it: within the database's quotes where it is no plain word or an
/// SQL keyword.
std::string writtenName(const std::string& name, const Database& database);

/// The same of a table, with its schema where that is needed.
std::string writtenName(const TableEntry& table, const Database& database);

}  // namespace probe
