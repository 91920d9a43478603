#include "platform/linux/odbc/OdbcConnection.h"

#include <array>

#include "formats/connection/odbc_connection_string.h"
#include "platform/linux/base/com_failures.h"
#include "platform/linux/odbc/OdbcRecordset.h"
#include "platform/linux/odbc/abandonable_call.h"
#include "platform/linux/odbc/driver_library.h"
#include "platform/linux/odbc/odbc_errors.h"

namespace intake {

namespace {

constexpr std::chrono::seconds CONNECT_TIME(15);

constexpr ComFailure NO_COMMAND{0x80040E0C, "A command has not been set for the command object."};

/// Otherwise SQLite's driver takes what stands before a dot for the name of a table, even in an
/// alias, and waits 100 seconds for a locked database. It keeps all records in memory; StepAPI=1
/// would not, but then it does not know the types of expressions.
constexpr std::array<std::array<const char*, 2>, 3> SQLITE_SETTINGS{{
    {"LongNames", "1"},
    {"ShortNames", "1"},
    {"Timeout", "15000"},
}};

/// With the settings that we want where the user does not want others.
ConnectionString withSettings(ConnectionString connection) {
    if (driverLibrary(connection).find("sqlite3odbc") == std::string::npos) {
        return connection;
    }
    for (const auto& [key, value] : SQLITE_SETTINGS) {
        if (settingOf(connection, key).empty()) {
            connection.add({key, value, value});
        }
    }
    return connection;
}

/// What drivers say of an empty query misleads, such as "out of memory".
bool isBlank(const std::string& query) {
    return query.find_first_not_of(" \t\r\n;") == std::string::npos;
}

}  // namespace

void OdbcConnection::open(const std::string& connectionString) {
    const ConnectionString connection = toOdbc(ConnectionString::parse(connectionString));
    keepErrors([&] {
        if (const auto reason = loadDriver(connection)) {
            UNSPECIFIED.raise(ODBC_SOURCE, *reason);
        }
        connect(withSettings(connection).text());
        driver_ = describeDriver(session_->connection().get());
    });
}

/// Not every driver can be told how long it may take, and none gives up when it is asked to.
void OdbcConnection::connect(const std::string& connectionString) {
    const auto connected = std::make_shared<bool>(false);
    const auto call = [session = session_, connected, connectionString] {
        *connected = session->connect(connectionString);
    };
    const CallOutcome outcome = makeAbandonableCall(call, endMark_, CONNECT_TIME);
    if (outcome != CallOutcome::DONE) {
        session_ = std::make_shared<OdbcSession>();
    }
    if (outcome == CallOutcome::ENDED) {
        raiseGivenUp(ODBC_SOURCE);
    }
    if (outcome == CallOutcome::LATE) {
        UNSPECIFIED.raise(ODBC_SOURCE, "The database server does not answer.");
    }
    if (!*connected) {
        throwOdbcFailure(session_->connection(), false);
    }
}

std::unique_ptr<Recordset> OdbcConnection::openRecordset(const std::string& query) {
    std::unique_ptr<Recordset> records;
    keepErrors([&] {
        if (isBlank(query)) {
            NO_COMMAND.raise(ODBC_SOURCE, "The query is empty.");
        }
        records = std::make_unique<OdbcRecordset>(*session_, driver_, query, endMark_);
    });
    return records;
}

void OdbcConnection::keepErrors(const std::function<void()>& step) {
    errors_.clear();
    try {
        step();
    } catch (const OdbcFailure& failure) {
        errors_ = failure.errors();
        throw;
    }
}

}  // namespace intake
