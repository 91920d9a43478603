#include "platform/linux/ProviderConnection.h"

#include <algorithm>

#include "formats/connection/connection_string.h"
#include "formats/connection/odbc_connection_string.h"
#include "formats/connection/sqlite_connection_string.h"
#include "formats/text/ascii.h"
#include "platform/linux/base/com_failures.h"
#include "platform/linux/odbc/OdbcConnection.h"
#include "platform/linux/sqlite/SqliteConnection.h"
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
    const auto& properties = extended.properties();
    return std::any_of(properties.begin(), properties.end(), [](const ConnectionProperty& each) {
        return startsWithIgnoringCase(each.key, "Excel");
    });
}

std::unique_ptr<OpenConnection> openConnection(const std::string& text, const EndMark& endMark) {
    try {
        const auto connection = ConnectionString::parse(text);
        if (isWorkbook(connection)) {
            return std::make_unique<WorkbookConnection>(connection, endMark);
        }
        if (const auto settings = sqliteSettings(connection)) {
            return std::make_unique<SqliteConnection>(*settings, endMark);
        }
        return std::make_unique<OdbcConnection>(connection, endMark);
    } catch (const ProviderNotFound& error) {
        NO_PROVIDER.raise(SOURCE, error.what());
    } catch (const ConnectionStringError& error) {
        BAD_CONNECTION_STRING.raise(SOURCE, error.what());
    }
}

}  // namespace

template <class Step>
void ProviderConnection::keepErrors(Step step) {
    errors_.clear();
    try {
        step();
    } catch (const ConnectionFailure& failure) {
        errors_ = failure.errors();
        throw;
    }
}

void ProviderConnection::open(const std::string& connectionString) {
    keepErrors([&] { connection_ = openConnection(connectionString, endMark_); });
}

std::unique_ptr<Recordset> ProviderConnection::openRecordset(const std::string& query) {
    std::unique_ptr<Recordset> records;
    keepErrors([&] { records = connection_->openRecordset(query); });
    return records;
}

std::vector<std::string> ProviderConnection::warnings() {
    return connection_->warnings();
}

std::unique_ptr<Connection> LinuxDatabases::createConnection(const EndMark& endMark) {
    return std::make_unique<ProviderConnection>(endMark);
}

}  // namespace intake
