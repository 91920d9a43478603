#pragma once

#include <string>

#include "platform/linux/connection_string.h"

namespace intake {

/// The ODBC connection string that means the same as one of ADO: for a provider that has an ODBC
/// driver with its keys translated, without a provider or with that for ODBC much as it is. Throws
/// PlatformError for a provider that is not known, and for a value that the driver could not be
/// given as it is; it names provider or key and shows no value.
std::string odbcConnectionString(const ConnectionString& connection);

/// What opening a connection throws for a provider that is not to be had.
[[noreturn]] void throwProviderNotFound(const std::string& provider);

}  // namespace intake
