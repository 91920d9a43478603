#pragma once

#include <string>
#include <vector>

#include "platform/Database.h"
#include "platform/PlatformError.h"
#include "platform/linux/odbc/OdbcHandle.h"

namespace intake {

/// What failures name as their source.
constexpr const char* ODBC_SOURCE = "ODBC";

/// A failed step of a database, with all that the driver reported about it.
class OdbcFailure : public PlatformError {
public:
    OdbcFailure(const PlatformError& failure, std::vector<Connection::Error> errors)
        : PlatformError(failure), errors_(std::move(errors)) {}

    const std::vector<Connection::Error>& errors() const { return errors_; }

private:
    std::vector<Connection::Error> errors_;
};

/// Throws the OdbcFailure of the last call on the handle; the first of its errors tells what went
/// wrong. `narrow`: the driver has no wide functions, its texts are in UTF-8.
[[noreturn]] void throwOdbcFailure(const OdbcHandle& handle, bool narrow);

}  // namespace intake
