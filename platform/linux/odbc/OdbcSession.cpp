#include "platform/linux/odbc/OdbcSession.h"

#include "platform/linux/odbc/odbc_calls.h"

namespace intake {

namespace {

/// ODBC passes numbers as pointers.
SQLPOINTER asPointer(uintptr_t number) {
    return reinterpret_cast<SQLPOINTER>(number);  // NOLINT(performance-no-int-to-ptr)
}

OdbcHandle makeEnvironment() {
    OdbcHandle environment(SQL_HANDLE_ENV, nullptr);
    SQLSetEnvAttr(environment.get(), SQL_ATTR_ODBC_VERSION, asPointer(SQL_OV_ODBC3), 0);
    return environment;
}

}  // namespace

OdbcSession::OdbcSession()
    : environment_(makeEnvironment()), connection_(SQL_HANDLE_DBC, environment_.get()) {}

OdbcSession::~OdbcSession() {
    if (connected_) {
        SQLDisconnect(connection_.get());
    }
}

bool OdbcSession::connect(const std::string& connectionString, std::chrono::seconds limit) {
    SQLSetConnectAttr(connection_.get(), SQL_ATTR_LOGIN_TIMEOUT,
                      asPointer(static_cast<uintptr_t>(limit.count())), SQL_IS_UINTEGER);
    connected_ = SQL_SUCCEEDED(connectWithString(connection_.get(), connectionString));
    return connected_;
}

}  // namespace intake
