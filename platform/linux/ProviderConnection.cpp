#include "platform/linux/ProviderConnection.h"

#include "formats/connection/connection_string.h"
#include "formats/connection/odbc_connection_string.h"
#include "formats/text/ascii.h"
#include "platform/linux/base/com_failures.h"
#include "platform/linux/odbc/OdbcConnection.h"
#include "platform/linux/workbook/WorkbookConnection.h"

namespace intake {

namespace {

constexpr const char* SOURCE = "Intake";
constexpr ComFailure NO_PROVIDER{0x800A0E7A,
                                 "Provider cannot be found. It may not be properly installed."};

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
    try {
        if (isWorkbook(ConnectionString::parse(connectionString))) {
            provider_ = std::make_unique<WorkbookConnection>(endMark_);
        } else {
            provider_ = std::make_unique<OdbcConnection>(endMark_);
        }
        provider_->open(connectionString);
    } catch (const ProviderNotFound& error) {
        NO_PROVIDER.raise(SOURCE, error.what());
    } catch (const ConnectionStringError& error) {
        BAD_CONNECTION_STRING.raise(SOURCE, error.what());
    }
}

std::unique_ptr<Recordset> ProviderConnection::openRecordset(const std::string& query) {
    return provider_->openRecordset(query);
}

std::vector<Connection::Error> ProviderConnection::errors() {
    return provider_ == nullptr ? std::vector<Error>() : provider_->errors();
}

}  // namespace intake
