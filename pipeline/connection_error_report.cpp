#include "pipeline/connection_error_report.h"

#include <array>
#include <cstdio>

namespace intake {

std::string connectionErrorReport(Connection& connection, const PlatformError& failure) {
    std::string report;
    for (const Connection::Error& error : connection.errors()) {
        std::array<char, 16> number{};
        std::snprintf(number.data(), number.size(), "0x%x", error.number);
        report.append("Error number: ")
            .append(number.data())
            .append("    ")
            .append(error.description)
            .append("\r\r\n");
    }
    return report.empty() ? "ERROR in Connection Open = " + failure.description() : report;
}

}  // namespace intake
