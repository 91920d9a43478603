#include "workbench/probe/database/OdbcHandles.h"

#include <algorithm>

namespace probe {

namespace {

/// ODBC passes numbers as pointers.
SQLPOINTER asPointer(long number) {
    return reinterpret_cast<SQLPOINTER>(number);  // NOLINT(performance-no-int-to-ptr)
}

}  // namespace

long secondsUntil(Deadline end) {
    const auto left = end - std::chrono::steady_clock::now();
    return std::max<long>(1, std::chrono::ceil<std::chrono::seconds>(left).count());
}

OdbcHandles::OdbcHandles() {
    SQLAllocHandle(SQL_HANDLE_ENV, nullptr, &environment_);
    SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, asPointer(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_);
}

OdbcHandles::~OdbcHandles() {
    if (isConnected_) {
        SQLEndTran(SQL_HANDLE_DBC, connection_, SQL_ROLLBACK);
        SQLDisconnect(connection_);
    }
    SQLFreeHandle(SQL_HANDLE_DBC, connection_);
    SQLFreeHandle(SQL_HANDLE_ENV, environment_);
}

bool OdbcHandles::connect(const std::string& connectionString, Deadline end) {
    SQLSetConnectAttr(connection_, SQL_ATTR_LOGIN_TIMEOUT, asPointer(secondsUntil(end)),
                      SQL_IS_UINTEGER);
    auto* const text = reinterpret_cast<SQLCHAR*>(const_cast<char*>(connectionString.c_str()));
    isConnected_ = SQL_SUCCEEDED(SQLDriverConnect(connection_, nullptr, text, SQL_NTS, nullptr, 0,
                                                  nullptr, SQL_DRIVER_NOPROMPT));
    return isConnected_;
}

}  // namespace probe
