#pragma once

#include <memory>

#include "formats/connection/connection_string.h"
#include "workbench/probe/database/OdbcHandles.h"

namespace probe {

/// Connects. `written` is the connection string as the user wrote it, to be mended. Throws
/// DatabaseFailure; where the server has no such database, it names those that it has.
std::unique_ptr<OdbcHandles> connectOdbc(const intake::ConnectionString& odbc,
                                         const std::string& written, Deadline end);

}  // namespace probe
