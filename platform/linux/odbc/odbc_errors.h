#pragma once

#include <string>
#include <vector>

#include "platform/Database.h"
#include "platform/linux/odbc/OdbcHandle.h"

namespace intake {

/// What the last failed call on the handle left, in its order. `narrow`: the driver has no wide
/// functions, its texts are in UTF-8.
std::vector<Connection::Error> odbcErrors(const OdbcHandle& handle, bool narrow);

/// Throws the PlatformError of a failed step; the first of its errors tells what went wrong.
[[noreturn]] void throwOdbcError(const std::vector<Connection::Error>& errors);

/// Throws the PlatformError of a statement that returns no records.
[[noreturn]] void throwNoRecords();

/// Throws the PlatformError of a step that failed without an error of the driver.
[[noreturn]] void throwOdbcError(const std::string& description);

/// Throws the PlatformError of a step that nobody waits for any more.
[[noreturn]] void throwQueryGivenUp();

}  // namespace intake
