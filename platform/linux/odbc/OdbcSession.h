#pragma once

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

    /// May take as long as it likes.
    bool connect(const std::string& connectionString);

    const OdbcHandle& connection() const { return connection_; }

private:
    OdbcHandle environment_;
    OdbcHandle connection_;
    bool connected_ = false;
};

}  // namespace intake
