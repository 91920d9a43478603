#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/Database.h"
#include "platform/PlatformError.h"

namespace intake {

/// A connection that one provider has opened, closed with its object. Belongs to a worker thread.
class OpenConnection {
public:
    virtual ~OpenConnection() = default;

    /// Runs a query. Throws PlatformError, also for a statement that has no result set.
    virtual std::unique_ptr<Recordset> openRecordset(const std::string& query) = 0;
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

}  // namespace intake
