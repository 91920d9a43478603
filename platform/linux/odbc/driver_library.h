#pragma once

#include <optional>
#include <string>

#include "formats/connection/connection_string.h"

namespace intake {

/// What an ODBC connection string says for a key, or else the data source that it names; empty
/// where neither says anything.
std::string settingOf(const ConnectionString& connection, const char* key);

/// The file of the driver that a connection string asks for; empty where it asks for none.
std::string driverLibrary(const ConnectionString& connection);

/// Loads the driver that a connection string asks for, for good, and returns why it could not. What
/// asks for none is left to the driver manager.
///
/// The driver manager itself must not come upon a driver that is missing: it keeps the reason where
/// all threads write and free it.
std::optional<std::string> loadDriver(const ConnectionString& connection);

}  // namespace intake
