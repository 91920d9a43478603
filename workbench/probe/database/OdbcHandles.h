#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>

#include "workbench/probe/database/Database.h"

namespace probe {

/// A connection through a driver of ODBC, closed with its object.
class OdbcHandles {
public:
    OdbcHandles();
    ~OdbcHandles();
    OdbcHandles(const OdbcHandles&) = delete;
    OdbcHandles& operator=(const OdbcHandles&) = delete;

    /// Most drivers, but not all, keep to the deadline.
    bool connect(const std::string& connectionString, Deadline end);

    SQLHDBC connection() const { return connection_; }

private:
    SQLHENV environment_ = nullptr;
    SQLHDBC connection_ = nullptr;
    bool isConnected_ = false;
};

/// A statement, freed with its object.
class OdbcStatementHandle {
public:
    explicit OdbcStatementHandle(SQLHDBC connection) {
        SQLAllocHandle(SQL_HANDLE_STMT, connection, &handle_);
    }
    ~OdbcStatementHandle() { SQLFreeHandle(SQL_HANDLE_STMT, handle_); }
    OdbcStatementHandle(const OdbcStatementHandle&) = delete;
    OdbcStatementHandle& operator=(const OdbcStatementHandle&) = delete;

    SQLHSTMT get() const { return handle_; }

private:
    SQLHSTMT handle_ = nullptr;
};

/// Seconds until then, at least 1.
long secondsUntil(Deadline end);

}  // namespace probe
