#include "pipeline/com_error_report.h"

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

}  // namespace intake
