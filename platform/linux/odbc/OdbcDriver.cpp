#include "platform/linux/odbc/OdbcDriver.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace intake {

namespace {

struct DriverRow {
    std::string_view name;  // what the name of its library begins with
    OdbcDriver driver;
};

// SQLite's and MariaDB's lose records when they fetch several at a time and a text is asked for
// again.
constexpr std::array<DriverRow, 4> DRIVERS{{
    {"sqlite3odbc", {.narrow = true, .givesUtf8 = true, .boundRecords = 1}},
    {"psqlodbcw",
     {.givesUtf8 = true, .asTexts = false, .holdsNumbersAsTexts = true, .boundRecords = 64}},
    {"psqlodbca",
     {.narrow = true,
      .givesUtf8 = true,
      .asTexts = false,
      .holdsNumbersAsTexts = true,
      .boundRecords = 64}},
    // Its wide texts fail when their buffer ends within a character.
    {"libmaodbc",
     {.givesUtf8 = true, .asTexts = false, .preparesQueries = true, .boundRecords = 1}},
}};

}  // namespace

OdbcDriver describeDriver(SQLHDBC connection) {
    std::array<char, 128> name{};
    SQLSMALLINT length = 0;
    SQLGetInfo(connection, SQL_DRIVER_NAME, name.data(), static_cast<SQLSMALLINT>(name.size() - 1),
               &length);
    const std::string_view library(name.data());
    const auto row = std::find_if(DRIVERS.begin(), DRIVERS.end(), [&](const DriverRow& each) {
        return library.starts_with(each.name);
    });
    return row == DRIVERS.end() ? OdbcDriver{} : row->driver;
}

}  // namespace intake
