#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "workbench/cli/run/LoadReport.h"

namespace workbench {

/// No report of a load is longer, in bytes.
constexpr std::size_t longestReport = 16U << 10;

/// A load as a line of a file tells of it that `run --report` has written.
struct ReportedLoad {
    LoadReport report;
    std::string time;
};

/// Nothing when the line is no such report.
std::optional<ReportedLoad> reportedLoad(const std::string& line);

/// Whether a file begins with a report of a load. Asks the disk: for jobs.
bool isReport(const std::filesystem::path& file);

}  // namespace workbench
