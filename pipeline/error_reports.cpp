#include "pipeline/error_reports.h"

#include <array>
#include <cstdio>

namespace intake {

std::string comErrorReport(const PlatformError& error) {
    std::array<char, 16> code{};
    std::snprintf(code.data(), code.size(), "0x%x", error.code());
    return std::string("Error\n\tCode = ")
        .append(code.data())
        .append("\n\tCode meaning = ")
        .append(error.meaning())
        .append("\n\tSource = ")
        .append(error.source())
        .append("\n\tDescription = ")
        .append(error.description())
        .append("\n");
}

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
