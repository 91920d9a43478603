#pragma once

#include "formats/connection/connection_string.h"

namespace probe {

/// Throws DatabaseFailure when the driver or the data source that an ODBC connection string names
/// is not known to this machine; it names those that are. `written` is the connection string as the
/// user wrote it, to be mended.
void checkDriver(const intake::ConnectionString& odbc, const std::string& written);

}  // namespace probe
