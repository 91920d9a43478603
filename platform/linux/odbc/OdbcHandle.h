#pragma once

#include <sql.h>
#include <sqlext.h>

#include <utility>

namespace intake {

/// A handle of unixODBC, freed with its object. Null when it could not be made.
class OdbcHandle {
public:
    /// `parent` is the environment of a connection, the connection of a statement.
    OdbcHandle(SQLSMALLINT type, SQLHANDLE parent) : type_(type) {
        if (!SQL_SUCCEEDED(SQLAllocHandle(type, parent, &handle_))) {
            handle_ = nullptr;
        }
    }
    ~OdbcHandle() {
        if (handle_ != nullptr) {
            SQLFreeHandle(type_, handle_);
        }
    }
    OdbcHandle(OdbcHandle&& other) noexcept
        : type_(other.type_), handle_(std::exchange(other.handle_, nullptr)) {}
    OdbcHandle& operator=(OdbcHandle&&) = delete;

    SQLSMALLINT type() const { return type_; }
    SQLHANDLE get() const { return handle_; }

private:
    SQLSMALLINT type_;
    SQLHANDLE handle_ = nullptr;
};

}  // namespace intake
