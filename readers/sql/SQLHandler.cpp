#include "readers/sql/SQLHandler.h"

#include "pipeline/error_reports.h"
#include "readers/sql/SqlRecords.h"

namespace intake {

bool SQLHandler::Read(const RequestRecord& request, std::string& script, std::string& error) {
    logger_.Write(LOG_DEBUG, "Before CreateInstance\n");
    const std::unique_ptr<Connection> connection = databases_.createConnection(endMark_);
    if (!open(request, *connection, error)) {
        return false;
    }
    const std::unique_ptr<Recordset> recordset = query(request, *connection, error);
    return recordset != nullptr && SqlRecords(*recordset, request, logger_, script, error).write();
}

bool SQLHandler::open(const RequestRecord& request, Connection& connection, std::string& error) {
    logger_.Write(LOG_DEBUG, "Before connection open\n");
    try {
        connection.open(request.connStr);
        for (const std::string& warning : connection.warnings()) {
            logger_.Write(LOG_WARNING, {"SQL: ", warning, "\n"});
        }
        return true;
    } catch (const PlatformError& failure) {
        error.append("Failed to open the connection string ").append(request.connStr);
        error.append(connectionErrorReport(connection, failure));
        return false;
    }
}

std::unique_ptr<Recordset> SQLHandler::query(const RequestRecord& request, Connection& connection,
                                             std::string& error) {
    logger_.Write(LOG_DEBUG, "Before recordset open\n");
    try {
        return connection.openRecordset(request.query);
    } catch (const PlatformError& failure) {
        error.append("Failed to open recordset with query ").append(request.query).append("\n");
        error.append(connectionErrorReport(connection, failure));
        return nullptr;
    }
}

}  // namespace intake
