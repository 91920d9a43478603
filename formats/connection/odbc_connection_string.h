#pragma once

#include <string>

#include "formats/connection/connection_string.h"

namespace intake {

/// A connection string names a provider that is not to be had.
class ProviderNotFound : public ConnectionStringError {
public:
    explicit ProviderNotFound(const std::string& provider);
};

/// The ODBC connection string that means the same as one of ADO: for a provider that has an ODBC
/// driver with its keys translated, without a provider or with that for ODBC much as it is. Throws
/// ProviderNotFound, and ConnectionStringError for a value that the driver could not be given as it
/// is; it names the key.
ConnectionString toOdbc(const ConnectionString& connection);

}  // namespace intake
