#include "workbench/probe/database/odbc_drivers.h"

#include <odbcinst.h>
#include <sql.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <vector>

#include "formats/text/ascii.h"
#include "workbench/probe/database/Database.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

struct Package {
    std::string_view driver;
    const char* name;
};

// Of Debian.
constexpr std::array packages{Package{"PostgreSQL Unicode", "odbc-postgresql"},
                              Package{"MariaDB Unicode", "odbc-mariadb"},
                              Package{"FreeTDS", "tdsodbc"}, Package{"SQLite3", "libsqliteodbc"},
                              Package{"MDBTools", "odbc-mdbtools"}};

/// The sections of an ini file of unixODBC: all drivers, or all data sources.
std::vector<std::string> sectionsOf(const char* file) {
    std::vector<char> text(65536);
    const int length = SQLGetPrivateProfileString(nullptr, nullptr, "", text.data(),
                                                  static_cast<int>(text.size()), file);
    std::vector<std::string> names;
    std::string_view rest(text.data(), static_cast<std::size_t>(std::max(0, length)));
    while (!rest.empty()) {
        const std::string_view name = rest.substr(0, rest.find('\0'));
        const bool isMeant = !name.empty() && name != "ODBC" && name != "ODBC Data Sources";
        if (isMeant) names.emplace_back(name);
        rest.remove_prefix(std::min(rest.size(), name.size() + 1));
    }
    return names;
}

bool isThere(const std::vector<std::string>& names, const std::string& name) {
    return std::any_of(names.begin(), names.end(), [&](const std::string& each) {
        return intake::equalIgnoringCase(each, name);
    });
}

/// The connection string with the nearest name that there is in the place of a wrong one.
Proposal withName(const std::string& written, const std::string& wrong,
                  const std::vector<std::string>& names) {
    const std::string near = nearName(wrong, names);
    const auto at = written.find(wrong);
    if (near.empty() || at == std::string::npos) return {};
    return {{"connStr", std::string(written).replace(at, wrong.size(), near)}};
}

std::string adviceOn(const std::string& driver) {
    const auto* const package = std::find_if(
        packages.begin(), packages.end(),
        [&](const Package& each) { return intake::equalIgnoringCase(each.driver, driver); });
    if (package == packages.end())
        return "Set the driver in \"Connection String\" (connStr) to one of these, or install it.";
    return std::string("Install it: apt install ") + package->name + ".";
}

void checkName(const std::string& driver, const std::string& written) {
    const std::vector<std::string> drivers = sectionsOf("odbcinst.ini");
    const bool isFile = driver.find('/') != std::string::npos;
    std::error_code error;
    if (isFile ? std::filesystem::exists(driver, error) : isThere(drivers, driver)) return;
    throw DatabaseFailure(DatabaseFault::Provider,
                          "There is no ODBC driver " + probe::quoted(driver) +
                              " on this machine. There are: " + listOf(drivers) + ".",
                          adviceOn(driver), withName(written, driver, drivers));
}

void checkDataSource(const std::string& name, const std::string& written) {
    const std::vector<std::string> sources = sectionsOf("odbc.ini");
    if (isThere(sources, name)) return;
    throw DatabaseFailure(DatabaseFault::Provider,
                          "No data source (DSN) " + probe::quoted(name) +
                              " is set up on this machine. There are: " + listOf(sources) + ".",
                          "Set it up in /etc/odbc.ini or ~/.odbc.ini, or name driver and server in "
                          "\"Connection String\" (connStr).",
                          withName(written, name, sources));
}

}  // namespace

void checkDriver(const intake::ConnectionString& odbc, const std::string& written) {
    const std::string driver = odbc.value("Driver");
    const std::string source = odbc.value("DSN");
    if (!driver.empty()) return checkName(driver, written);
    if (!source.empty()) return checkDataSource(source, written);
    if (odbc.find("FileDSN") != nullptr) return;
    throw DatabaseFailure(DatabaseFault::Provider,
                          "The connection string names no provider, no driver and no data source.",
                          "Begin \"Connection String\" (connStr) with Provider=, Driver= or DSN=.");
}

}  // namespace probe
