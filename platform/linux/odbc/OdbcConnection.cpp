#include "platform/linux/odbc/OdbcConnection.h"

#include "platform/linux/odbc/OdbcRecordset.h"
#include "platform/linux/odbc/QueryCanceller.h"
#include "platform/linux/odbc/odbc_errors.h"

namespace intake {

namespace {

SQLPOINTER attribute(SQLULEN value) {
    return reinterpret_cast<SQLPOINTER>(value);
}

OdbcHandle makeEnvironment() {
    OdbcHandle environment(SQL_HANDLE_ENV, nullptr);
    SQLSetEnvAttr(environment.get(), SQL_ATTR_ODBC_VERSION, attribute(SQL_OV_ODBC3), 0);
    return environment;
}

}  // namespace

OdbcConnection::OdbcConnection(const EndMark& endMark)
    : endMark_(endMark),
      environment_(makeEnvironment()),
      connection_(SQL_HANDLE_DBC, environment_.get()) {}

OdbcConnection::~OdbcConnection() {
    if (connected_) {
        SQLDisconnect(connection_.get());
    }
}

void OdbcConnection::open(const std::string& connectionString) {
    constexpr SQLULEN LOGIN_SECONDS = 15;
    errors_.clear();
    SQLSetConnectAttr(connection_.get(), SQL_ATTR_LOGIN_TIMEOUT, attribute(LOGIN_SECONDS), 0);
    if (!SQL_SUCCEEDED(connectWithString(connection_.get(), connectionString))) {
        fail(connection_);
    }
    connected_ = true;
    driver_ = describeDriver(connection_.get());
}

std::unique_ptr<Recordset> OdbcConnection::openRecordset(const std::string& query) {
    errors_.clear();
    OdbcHandle statement(SQL_HANDLE_STMT, connection_.get());
    SQLRETURN result = SQL_ERROR;
    {
        const QueryCanceller canceller(statement.get(), endMark_);
        result = executeQuery(statement.get(), query, driver_.narrow);
    }
    if (endMark_.isSet()) {
        throwQueryGivenUp();
    }
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) {
        fail(statement);
    }
    return std::make_unique<OdbcRecordset>(std::move(statement), driver_, endMark_);
}

void OdbcConnection::fail(const OdbcHandle& handle) {
    errors_ = odbcErrors(handle, driver_.narrow);
    throwOdbcError(errors_);
}

}  // namespace intake
