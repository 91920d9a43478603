#pragma once

#include <chrono>
#include <string>

#include "platform/linux/odbc/OdbcHandle.h"

namespace intake {

/// The handles of one connection. Closed and freed with its object, by whoever holds it last.
class OdbcSession {
public:
    OdbcSession();
    ~OdbcSession();
    OdbcSession(const OdbcSession&) = delete;
    OdbcSession& operator=(const OdbcSession&) = delete;

    /// Not every driver keeps to the limit.
    bool connect(const std::string& connectionString, std::chrono::seconds limit);

    const OdbcHandle& connection() const { return connection_; }

private:
    OdbcHandle environment_;
    OdbcHandle connection_;
    bool connected_ = false;
};

}  // namespace intake
