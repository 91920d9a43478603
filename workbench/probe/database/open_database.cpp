#include "workbench/probe/database/open_database.h"

#include <array>
#include <utility>

#include "formats/connection/odbc_connection_string.h"
#include "formats/text/ascii.h"
#include "workbench/probe/database/OdbcDatabase.h"
#include "workbench/probe/database/SheetDatabase.h"
#include "workbench/probe/database/database_file.h"
#include "workbench/probe/database/odbc_drivers.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

using intake::ConnectionString;

bool isWorkbook(const ConnectionString& connection) {
    if (!intake::startsWithIgnoringCase(connection.value("Provider"), "Microsoft.ACE.OLEDB"))
        return false;
    const auto extended =
        ConnectionString::parseExtendedProperties(connection.value("Extended Properties"));
    return !extended.properties().empty() &&
           intake::startsWithIgnoringCase(extended.properties().front().key, "Excel");
}

bool hasHeader(const ConnectionString& connection) {
    const auto extended =
        ConnectionString::parseExtendedProperties(connection.value("Extended Properties"));
    return !intake::equalIgnoringCase(extended.value("HDR"), "NO");
}

std::unique_ptr<Database> openOdbc(const ConnectionString& connection, const std::string& written,
                                   Deadline end) {
    const ConnectionString odbc = intake::toOdbc(connection);
    checkDriver(odbc, written);
    // Its driver makes what is not there.
    const bool isSqlite =
        intake::lowerCase(odbc.value("Driver")).find("sqlite") != std::string::npos;
    if (isSqlite) checkDatabaseFile(odbc.value("Database"));
    return std::make_unique<OdbcDatabase>(odbc, written, end);
}

std::string serverOf(const ConnectionString& odbc) {
    constexpr std::array keys{std::pair{"Driver", ""}, std::pair{"DSN", "data source "},
                              std::pair{"Server", "server "}, std::pair{"Port", "port "},
                              std::pair{"Database", "database "}};
    std::string place;
    for (const auto& [key, word] : keys) {
        const std::string value = odbc.value(key);
        if (!value.empty()) place += (place.empty() ? "" : ", ") + (word + value);
    }
    return place;
}

}  // namespace

std::unique_ptr<Database> openDatabase(const std::string& text, Deadline end) {
    try {
        const auto connection = ConnectionString::parse(text);
        if (isWorkbook(connection))
            return std::make_unique<SheetDatabase>(connection.value("Data Source"),
                                                   hasHeader(connection), end);
        if (const auto settings = intake::sqliteSettings(connection))
            return std::make_unique<SqliteDatabase>(*settings, end);
        return openOdbc(connection, text, end);
    } catch (const intake::ProviderNotFound& fault) {
        throw DatabaseFailure(DatabaseFault::Provider, asSentence(fault.what()),
                              "Correct Provider in \"Connection String\" (connStr).");
    } catch (const intake::ConnectionStringError& fault) {
        throw DatabaseFailure(DatabaseFault::ConnectionString, asSentence(fault.what()),
                              "Correct \"Connection String\" (connStr): pairs such as "
                              "Provider=SQLite;Data Source=file.db.");
    }
}

std::string placeOfDatabase(const std::string& text) {
    try {
        const auto connection = ConnectionString::parse(text);
        if (isWorkbook(connection)) return connection.value("Data Source");
        if (const auto settings = intake::sqliteSettings(connection)) return settings->path;
        return serverOf(intake::toOdbc(connection));
    } catch (const intake::ConnectionStringError&) {
        return "";
    }
}

}  // namespace probe
