#include "formats/connection/sqlite_connection_string.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "formats/text/ascii.h"
#include "formats/text/number_text.h"

namespace intake {

namespace {

constexpr std::chrono::milliseconds LOCK_TIME(15000);

constexpr std::array<std::string_view, 2> DRIVERS{"SQLite3", "SQLite"};
constexpr std::array<std::string_view, 2> DATA_SOURCES{"DSN", "FileDSN"};
constexpr std::array<std::string_view, 4> FILES{"Data Source", "Database", "DBQ",
                                                "Initial Catalog"};
constexpr std::array<std::string_view, 5> TAKEN{"Provider", "Driver", "Timeout",
                                                "Persist Security Info", "OLE DB Services"};

template <size_t COUNT>
bool isOneOf(const std::array<std::string_view, COUNT>& words, std::string_view word) {
    return std::any_of(words.begin(), words.end(),
                       [&](std::string_view each) { return equalIgnoringCase(each, word); });
}

/// The properties together with those that the provider for ODBC is given in one of them.
ConnectionString flattened(const ConnectionString& connection) {
    ConnectionString flat;
    for (const ConnectionProperty& property : connection.properties()) {
        if (!equalIgnoringCase(property.key, "Extended Properties")) {
            flat.add(property);
            continue;
        }
        const ConnectionString inner = ConnectionString::parse(property.value);
        for (const ConnectionProperty& each : inner.properties()) {
            flat.add(each);
        }
    }
    return flat;
}

bool namesDataSource(const ConnectionString& connection) {
    const auto& properties = connection.properties();
    return std::any_of(properties.begin(), properties.end(),
                       [](const auto& property) { return isOneOf(DATA_SOURCES, property.key); });
}

std::chrono::milliseconds lockTimeOf(const ConnectionString& connection) {
    const std::string text = connection.value("Timeout");
    if (text.empty()) {
        return LOCK_TIME;
    }
    const auto milliseconds = parseWhole<uint32_t>(text);
    if (!milliseconds) {
        throw ConnectionStringError("\"Timeout\" is no number of milliseconds: " + text);
    }
    return std::chrono::milliseconds(*milliseconds);
}

SqliteSettings settingsOf(const ConnectionString& connection) {
    SqliteSettings settings{{}, lockTimeOf(connection), {}};
    for (const ConnectionProperty& property : connection.properties()) {
        if (isOneOf(FILES, property.key)) {
            settings.path = settings.path.empty() ? property.value : settings.path;
        } else if (!isOneOf(TAKEN, property.key)) {
            settings.ignored.push_back(property.key);
        }
    }
    if (settings.path.empty()) {
        throw ConnectionStringError("The connection string names no \"Data Source\"");
    }
    return settings;
}

}  // namespace

std::optional<SqliteSettings> sqliteSettings(const ConnectionString& connection) {
    const std::string provider = connection.value("Provider");
    if (startsWithIgnoringCase(provider, "SQLite")) {
        return settingsOf(connection);
    }
    if (!provider.empty() && !startsWithIgnoringCase(provider, "MSDASQL")) {
        return std::nullopt;
    }
    const ConnectionString odbc = flattened(connection);
    if (namesDataSource(odbc) || !isOneOf(DRIVERS, odbc.value("Driver"))) {
        return std::nullopt;
    }
    return settingsOf(odbc);
}

std::string sqliteConnectionString(const std::string& file) {
    std::string value = file;
    if (file.find_first_of(";\"'{} ") != std::string::npos) {
        value = "\"";
        for (const char c : file) {
            value.append(c == '"' ? 2 : 1, c);
        }
        value += '"';
    }
    return "Provider=SQLite;Data Source=" + value;
}

}  // namespace intake
