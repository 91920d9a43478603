#include "formats/connection/odbc_connection_string.h"

#include <algorithm>
#include <array>

#include "formats/text/ascii.h"

namespace intake {

namespace {

/// How a value is written so that the driver reads just this value; for one that ended too early
/// would go on as another key. Drivers differ.
enum class Quoting {
    PLAIN,        // as it is; the driver knows no braces
    BRACES,       // in braces, a closing one inside written twice
    BARE_BRACES,  // in braces that "};" ends
    AS_WRITTEN,   // as it stands in the text, but for quotes, which ODBC does not know
};

/// The kinds of databases, in the order of DRIVERS.
enum Kind { ODBC, SQL_SERVER, POSTGRESQL, MARIADB, KINDS, ANY };

struct Driver {
    const char* name;  // as Debian registers it; null where the connection string names it itself
    Quoting quoting;
    Quoting passwordQuoting;
};

constexpr std::array<Driver, KINDS> DRIVERS{{
    {nullptr, Quoting::AS_WRITTEN, Quoting::AS_WRITTEN},
    {"FreeTDS", Quoting::BARE_BRACES, Quoting::BARE_BRACES},
    {"PostgreSQL Unicode", Quoting::PLAIN, Quoting::BRACES},
    {"MariaDB Unicode", Quoting::BRACES, Quoting::BRACES},
}};

struct Provider {
    const char* start;  // of its name, which may go on with a version
    Kind kind;
};

constexpr std::array<Provider, 8> PROVIDERS{{
    {"MSDASQL", ODBC},
    {"SQLOLEDB", SQL_SERVER},
    {"MSOLEDBSQL", SQL_SERVER},
    {"SQLNCLI", SQL_SERVER},
    {"PostgreSQL", POSTGRESQL},
    {"PGNP", POSTGRESQL},
    {"MySQL", MARIADB},
    {"MariaDB", MARIADB},
}};

constexpr std::string_view LEFT_OUT{};
constexpr std::string_view INSERTED = "*";  // the value is itself a list of keys
constexpr std::string_view DATABASE = "Database";
constexpr std::string_view PASSWORD = "PWD";
constexpr std::string_view TRUSTED = "Trusted_Connection";

struct KeyName {
    std::string_view key;
    std::string_view name;  // what the drivers call it
    Kind kind = ANY;        // for which kind; the first row that fits counts
};

/// A key that is not here keeps its name, for the driver may know it.
constexpr std::array<KeyName, 16> KEYS{{
    {"Provider", LEFT_OUT},
    {"Persist Security Info", LEFT_OUT},
    {"OLE DB Services", LEFT_OUT},
    {"Data Source", "DSN", ODBC},
    {"Data Source", "Server"},
    {"Server", "Server"},
    {"Port", "Port"},
    {"Initial Catalog", DATABASE},
    {"Database", DATABASE},
    {"Location", DATABASE, POSTGRESQL},
    {"User ID", "UID"},
    {"UID", "UID"},
    {"Password", PASSWORD},
    {"PWD", PASSWORD},
    {"Integrated Security", TRUSTED},
    {"Extended Properties", INSERTED, ODBC},
}};

[[noreturn]] void failToPass(const std::string& key, const char* driver, const char* reason) {
    throw ConnectionStringError("The ODBC driver \"" + std::string(driver) +
                                "\" cannot be given the value of \"" + key + "\", because it " +
                                reason);
}

Kind kindOf(const ConnectionString& connection) {
    const std::string name = connection.value("Provider");
    if (name.empty()) {
        return ODBC;
    }
    for (const Provider& provider : PROVIDERS) {
        if (startsWithIgnoringCase(name, provider.start)) {
            return provider.kind;
        }
    }
    throw ProviderNotFound(name);
}

/// The row for a key; null when it keeps its name.
const KeyName* findKey(const std::string& key, Kind kind) {
    const auto fits = [&](const KeyName& row) {
        return equalIgnoringCase(row.key, key) && (row.kind == ANY || row.kind == kind);
    };
    const auto row = std::find_if(KEYS.begin(), KEYS.end(), fits);
    return row == KEYS.end() ? nullptr : &*row;
}

std::string inBraces(const std::string& value) {
    std::string quoted = "{";
    for (const char c : value) {
        quoted.append(c == '}' ? 2 : 1, c);
    }
    return quoted + "}";
}

bool needsBraces(const std::string& value) {
    return value.find(';') != std::string::npos || value.starts_with('{') ||
           value.starts_with(' ') || value.ends_with(' ');
}

std::string quoted(const ConnectionProperty& property, Quoting quoting, const char* driver) {
    const std::string& value = property.value;
    switch (quoting) {
        case Quoting::PLAIN:
            if (value.find(';') != std::string::npos || value.starts_with('{')) {
                failToPass(property.key, driver, "holds a semicolon or begins with a brace");
            }
            return value;
        case Quoting::BRACES:
            return inBraces(value);
        case Quoting::BARE_BRACES:
            if (value.find("};") != std::string::npos) {
                failToPass(property.key, driver, "holds a closing brace before a semicolon");
            }
            return "{" + value + "}";
        case Quoting::AS_WRITTEN:
            break;
    }
    const bool inQuotes = property.written.starts_with('"') || property.written.starts_with('\'');
    return !inQuotes ? property.written : needsBraces(value) ? inBraces(value) : value;
}

std::string trustedConnection(const std::string& integratedSecurity) {
    constexpr std::array YES{"SSPI", "True", "Yes"};
    const bool trusted = std::any_of(YES.begin(), YES.end(), [&](const char* word) {
        return equalIgnoringCase(integratedSecurity, word);
    });
    return trusted ? "Yes" : "No";
}

void addAll(const ConnectionString& pairs, ConnectionString& result) {
    for (const ConnectionProperty& property : pairs.properties()) {
        result.add(property);
    }
}

/// Adds a pair in the words of the driver; nothing for what is left out.
void addTranslated(const ConnectionProperty& property, Kind kind, ConnectionString& result) {
    const Driver& driver = DRIVERS[kind];
    const auto add = [&](std::string_view key, const std::string& written) {
        result.add({std::string(key), property.value, written});
    };
    const KeyName* known = findKey(property.key, kind);
    if (known == nullptr) {
        const Quoting quoting = kind == ODBC ? Quoting::AS_WRITTEN : Quoting::PLAIN;
        return add(property.key, quoted(property, quoting, driver.name));
    }
    if (known->name == LEFT_OUT) {
        return;
    }
    if (known->name == INSERTED) {
        return addAll(toOdbc(ConnectionString::parse(property.value)), result);
    }
    if (known->name == TRUSTED) {
        return add(TRUSTED, trustedConnection(property.value));
    }
    const Quoting quoting = known->name == PASSWORD ? driver.passwordQuoting : driver.quoting;
    add(known->name, quoted(property, quoting, driver.name));
}

}  // namespace

ProviderNotFound::ProviderNotFound(const std::string& provider)
    : ConnectionStringError(
          "There is no provider \"" + provider +
          "\" on this system. There are MSDASQL for any ODBC driver, SQLOLEDB, MSOLEDBSQL, "
          "SQLNCLI, PostgreSQL, MySQL, MariaDB, SQLite, and Microsoft.ACE.OLEDB for Excel "
          "workbooks") {}

ConnectionString toOdbc(const ConnectionString& connection) {
    const Kind kind = kindOf(connection);
    const Driver& driver = DRIVERS[kind];
    ConnectionString result;
    if (driver.name != nullptr) {
        result.add({"Driver", driver.name, inBraces(driver.name)});
    }
    for (const ConnectionProperty& property : connection.properties()) {
        addTranslated(property, kind, result);
    }
    return result;
}

}  // namespace intake
