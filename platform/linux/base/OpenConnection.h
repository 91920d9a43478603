#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/Database.h"
#include "platform/PlatformError.h"
#include "platform/linux/base/com_failures.h"

namespace intake {

/// A connection that one provider has opened, closed with its object. Belongs to a worker thread.
class OpenConnection {
public:
    virtual ~OpenConnection() = default;

    /// Runs a query. Throws PlatformError, also for a statement that has no result set.
    virtual std::unique_ptr<Recordset> openRecordset(const std::string& query) = 0;

    /// What of the connection string was ignored, as whole sentences.
    virtual std::vector<std::string> warnings() { return {}; }
};

/// A failed step of a database, with all that the database reported about it.
class ConnectionFailure : public PlatformError {
public:
    ConnectionFailure(const PlatformError& failure, std::vector<Connection::Error> errors)
        : PlatformError(failure), errors_(std::move(errors)) {}

    const std::vector<Connection::Error>& errors() const { return errors_; }

private:
    std::vector<Connection::Error> errors_;
};

/// Throws what a database reported as its only error.
[[noreturn]] inline void throwReported(const ComFailure& failure, const char* source,
                                       const std::string& description) {
    throw ConnectionFailure(PlatformError(failure.code, failure.meaning, source, description),
                            {{failure.code, description}});
}

}  // namespace intake
