#include "platform/linux/ProviderConnection.h"

#include "platform/equal_ignoring_case.h"
#include "platform/linux/connection_string.h"
#include "platform/linux/odbc/OdbcConnection.h"
#include "platform/linux/odbc_connection_string.h"
#include "platform/linux/workbook/WorkbookConnection.h"

namespace intake {

namespace {

bool isWorkbook(const ConnectionString& connection) {
    if (!startsWithIgnoringCase(connection.value("Provider"), "Microsoft.ACE.OLEDB")) {
        return false;
    }
    const auto extended =
        ConnectionString::parseExtendedProperties(connection.value("Extended Properties"));
    return !extended.properties().empty() &&
           startsWithIgnoringCase(extended.properties().front().key, "Excel");
}

}  // namespace

void ProviderConnection::open(const std::string& connectionString) {
    const auto connection = ConnectionString::parse(connectionString);
    if (isWorkbook(connection)) {
        provider_ = std::make_unique<WorkbookConnection>(endMark_);
        provider_->open(connectionString);
        return;
    }
    const std::string translated = odbcConnectionString(connection);
    provider_ = std::make_unique<OdbcConnection>(endMark_);
    provider_->open(translated);
}

std::unique_ptr<Recordset> ProviderConnection::openRecordset(const std::string& query) {
    return provider_->openRecordset(query);
}

std::vector<Connection::Error> ProviderConnection::errors() {
    return provider_ == nullptr ? std::vector<Error>() : provider_->errors();
}

}  // namespace intake
