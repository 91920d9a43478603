#include "platform/linux/odbc_connection_string.h"

#include <algorithm>
#include <array>

#include "platform/equal_ignoring_case.h"
#include "platform/linux/com_failures.h"

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
enum Kind { ODBC, SQL_SERVER, POSTGRESQL, MARIADB, SQLITE, KINDS, ANY };

struct Driver {
    const char* name;  // as Debian registers it; null where the connection string names it itself
    Quoting quoting;
    Quoting passwordQuoting;
    bool needsDatabase;  // otherwise the driver opens something else
    const char* fixed;   // goes with every connection
};

constexpr std::array<Driver, KINDS> DRIVERS{{
    {nullptr, Quoting::AS_WRITTEN, Quoting::AS_WRITTEN, false, ""},
    {"FreeTDS", Quoting::BARE_BRACES, Quoting::BARE_BRACES, false, ""},
    {"PostgreSQL Unicode", Quoting::PLAIN, Quoting::BRACES, false, ""},
    {"MariaDB Unicode", Quoting::BRACES, Quoting::BRACES, false, ""},
    {"SQLite3", Quoting::PLAIN, Quoting::PLAIN, true, "NoCreat=Yes;"},  // loading creates no file
}};

struct Provider {
    const char* start;  // of its name, which may go on with a version
    Kind kind;
};

constexpr std::array<Provider, 9> PROVIDERS{{
    {"MSDASQL", ODBC},
    {"SQLOLEDB", SQL_SERVER},
    {"MSOLEDBSQL", SQL_SERVER},
    {"SQLNCLI", SQL_SERVER},
    {"PostgreSQL", POSTGRESQL},
    {"PGNP", POSTGRESQL},
    {"MySQL", MARIADB},
    {"MariaDB", MARIADB},
    {"SQLite", SQLITE},
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
constexpr std::array<KeyName, 17> KEYS{{
    {"Provider", LEFT_OUT},
    {"Persist Security Info", LEFT_OUT},
    {"OLE DB Services", LEFT_OUT},
    {"Data Source", "DSN", ODBC},
    {"Data Source", DATABASE, SQLITE},
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

constexpr const char* SOURCE = "Intake";
constexpr ComFailure NO_PROVIDER{0x800A0E7A,
                                 "Provider cannot be found. It may not be properly installed."};

[[noreturn]] void failToPass(const std::string& key, const char* driver, const char* reason) {
    BAD_CONNECTION_STRING.raise(SOURCE, "The ODBC driver \"" + std::string(driver) +
                                            "\" cannot be given the value of \"" + key +
                                            "\", because it " + reason);
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
    throwProviderNotFound(name);
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

std::string pair(std::string_view key, const std::string& value) {
    return std::string(key).append("=").append(value).append(";");
}

/// One pair in the words of the driver, and its semicolon; nothing for what is left out.
std::string translated(const ConnectionProperty& property, Kind kind) {
    const Driver& driver = DRIVERS[kind];
    const KeyName* known = findKey(property.key, kind);
    if (known == nullptr) {
        const Quoting quoting = kind == ODBC ? Quoting::AS_WRITTEN : Quoting::PLAIN;
        return pair(property.key, quoted(property, quoting, driver.name));
    }
    if (known->name == LEFT_OUT) {
        return "";
    }
    if (known->name == INSERTED) {
        return odbcConnectionString(ConnectionString::parse(property.value));
    }
    if (known->name == TRUSTED) {
        return pair(TRUSTED, trustedConnection(property.value));
    }
    const Quoting quoting = known->name == PASSWORD ? driver.passwordQuoting : driver.quoting;
    return pair(known->name, quoted(property, quoting, driver.name));
}

bool namesDatabase(const ConnectionString& connection, Kind kind) {
    const auto& properties = connection.properties();
    return std::any_of(properties.begin(), properties.end(), [kind](const auto& property) {
        const KeyName* known = findKey(property.key, kind);
        return known != nullptr && known->name == DATABASE && !property.value.empty();
    });
}

}  // namespace

std::string odbcConnectionString(const ConnectionString& connection) {
    const Kind kind = kindOf(connection);
    const Driver& driver = DRIVERS[kind];
    if (driver.needsDatabase && !namesDatabase(connection, kind)) {
        BAD_CONNECTION_STRING.raise(SOURCE, "The connection string names no \"Data Source\"");
    }
    std::string result = driver.name == nullptr ? "" : pair("Driver", inBraces(driver.name));
    for (const ConnectionProperty& property : connection.properties()) {
        result += translated(property, kind);
    }
    return result + driver.fixed;
}

void throwProviderNotFound(const std::string& provider) {
    NO_PROVIDER.raise(
        SOURCE,
        "There is no provider \"" + provider +
            "\" on this system. There are MSDASQL for any ODBC driver, SQLOLEDB, MSOLEDBSQL, "
            "SQLNCLI, PostgreSQL, MySQL, MariaDB, SQLite, and Microsoft.ACE.OLEDB for Excel "
            "workbooks");
}

}  // namespace intake
