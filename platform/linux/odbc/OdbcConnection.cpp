#include "platform/linux/odbc/OdbcConnection.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "formats/connection/odbc_connection_string.h"
#include "formats/text/ascii.h"
#include "formats/text/trim.h"
#include "platform/linux/base/AbandonableCalls.h"
#include "platform/linux/base/com_failures.h"
#include "platform/linux/odbc/OdbcRecordset.h"
#include "platform/linux/odbc/driver_library.h"
#include "platform/linux/odbc/odbc_errors.h"

namespace intake {

namespace {

/// For a data source. Otherwise SQLite's driver takes what stands before a dot for the name of a
/// table, even in an alias, and waits 100 seconds for a locked database. It keeps all records in
/// memory; StepAPI=1 would not, but then it does not know the types of expressions.
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

/// The query from its first word on.
std::string_view withoutComments(std::string_view query) {
    query = trimmedStart(query, XML_SPACE);
    while (query.starts_with("--") || query.starts_with("/*")) {
        const std::string_view end = query.starts_with("--") ? "\n" : "*/";
        const size_t at = std::min(query.find(end), query.size() - end.size());
        query = trimmedStart(query.substr(at + end.size()), XML_SPACE);
    }
    return query;
}

/// PostgreSQL's driver would wait for ever for what such a statement does not give.
bool isCopy(std::string_view query) {
    query = withoutComments(query);
    const std::string_view word = query.substr(0, query.find_first_of(" \t\r\n(\"/-"));
    return equalIgnoringCase(word, "copy");
}

/// Not every driver keeps to the time that it is given, and none gives up when it is asked to.
std::shared_ptr<OdbcSession> connect(const std::string& connectionString, const EndMark& endMark,
                                     std::chrono::milliseconds limit) {
    const auto session = std::make_shared<OdbcSession>();
    const auto connected = std::make_shared<bool>(false);
    const auto call = [session, connected, connectionString] {
        *connected = session->connect(connectionString, OdbcConnection::CONNECT_TIME);
    };
    thread_local AbandonableCalls connects;
    switch (connects.make(call, endMark, limit)) {
        case CallOutcome::ENDED:
            raiseGivenUp(ODBC_SOURCE);
        case CallOutcome::LATE:
            UNSPECIFIED.raise(ODBC_SOURCE, "The database server does not answer.");
        case CallOutcome::BUSY:
            UNSPECIFIED.raise(ODBC_SOURCE, "An earlier attempt to connect has not ended yet.");
        case CallOutcome::DONE:
            break;
    }
    if (!*connected) {
        throwOdbcFailure(session->connection(), false);
    }
    return session;
}

std::shared_ptr<OdbcSession> openSession(const ConnectionString& connection, const EndMark& endMark,
                                         std::chrono::milliseconds limit) {
    if (const auto reason = loadDriver(connection)) {
        UNSPECIFIED.raise(ODBC_SOURCE, *reason);
    }
    return connect(withSettings(connection).text(), endMark, limit);
}

}  // namespace

OdbcConnection::OdbcConnection(const ConnectionString& connection, const EndMark& endMark,
                               std::chrono::milliseconds limit)
    : endMark_(endMark),
      session_(openSession(toOdbc(connection), endMark, limit)),
      driver_(describeDriver(session_->connection().get())) {}

std::unique_ptr<Recordset> OdbcConnection::openRecordset(const std::string& query) {
    if (isBlank(query)) {
        NO_COMMAND.raise(ODBC_SOURCE, "The query is empty.");
    }
    if (isCopy(query)) {
        OBJECT_CLOSED.raise(ODBC_SOURCE, "COPY does not return records.");
    }
    return std::make_unique<OdbcRecordset>(*session_, driver_, query, endMark_);
}

}  // namespace intake
