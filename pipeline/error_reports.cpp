#include "pipeline/error_reports.h"

#include <array>
#include <cstdint>
#include <cstdio>

namespace intake {

namespace {

std::string hexadecimal(uint32_t number) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%x", number);
    return text.data();
}

}  // namespace

std::string comErrorReport(const PlatformError& error) {
    return std::string("Error\n\tCode = ")
        .append(hexadecimal(error.code()))
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
        report.append("Error number: ")
            .append(hexadecimal(error.number))
            .append("    ")
            .append(error.description)
            .append("\r\r\n");
    }
    return report.empty() ? "ERROR in Connection Open = " + failure.description() : report;
}

}  // namespace intake
