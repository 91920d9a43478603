#pragma once

#include <string>
#include <vector>

#include "platform/Database.h"
#include "platform/PlatformError.h"
#include "platform/linux/odbc/OdbcHandle.h"

namespace intake {

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

/// Throws the PlatformError of a step that failed without an error of the driver.
[[noreturn]] void throwOdbcError(const std::string& description);

/// Throws the PlatformError of a query without a word.
[[noreturn]] void throwNoQuery();

/// Throws the PlatformError of a statement that returns no records.
[[noreturn]] void throwNoRecords();

/// Throws the PlatformError of a step that nobody waits for any more.
[[noreturn]] void throwQueryGivenUp();

}  // namespace intake
