#include "platform/linux/odbc/OdbcConnection.h"

#include <cstring>

#include "platform/linux/odbc/OdbcRecordset.h"
#include "platform/linux/odbc/QueryCanceller.h"
#include "platform/linux/odbc/abandonable_call.h"
#include "platform/linux/odbc/driver_library.h"
#include "platform/linux/odbc/odbc_errors.h"

namespace intake {

namespace {

constexpr std::chrono::seconds CONNECT_TIME(15);

/// SQLite's driver takes what stands before a dot for the name of a table, also in an alias, unless
/// it is told otherwise.
std::string withExactColumnNames(const std::string& connectionString) {
    const char* const text = connectionString.c_str();
    const bool isForSqlite = strcasestr(text, "sqlite") != nullptr;
    const bool isSetByUser = strcasestr(text, "longnames") != nullptr;
    return isForSqlite && !isSetByUser ? connectionString + ";LongNames=1;ShortNames=1"
                                       : connectionString;
}

}  // namespace

void OdbcConnection::open(const std::string& connectionString) {
    errors_.clear();
    if (const auto reason = loadDriver(connectionString)) {
        throwOdbcError(*reason);
    }
    if (!connect(withExactColumnNames(connectionString))) {
        fail(session_->connection());
    }
    driver_ = describeDriver(session_->connection().get());
}

/// Not every driver can be told how long it may take, and none gives up when it is asked to.
bool OdbcConnection::connect(const std::string& connectionString) {
    const auto connected = std::make_shared<bool>(false);
    const auto call = [session = session_, connected, connectionString] {
        *connected = session->connect(connectionString);
    };
    switch (makeAbandonableCall(call, endMark_, CONNECT_TIME)) {
        case CallOutcome::DONE:
            return *connected;
        case CallOutcome::ENDED:
            session_ = std::make_shared<OdbcSession>();
            throwQueryGivenUp();
        case CallOutcome::LATE:
            session_ = std::make_shared<OdbcSession>();
            throwOdbcError("The database server does not answer.");
    }
    return false;
}

std::unique_ptr<Recordset> OdbcConnection::openRecordset(const std::string& query) {
    errors_.clear();
    OdbcHandle statement(SQL_HANDLE_STMT, session_->connection().get());
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
