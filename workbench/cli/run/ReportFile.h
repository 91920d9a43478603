#pragma once

#include <fstream>
#include <string>

#include "workbench/cli/StandardStreams.h"
#include "workbench/cli/run/LoadReport.h"

namespace workbench {

/// Where reports of loads go, a line each, behind those that are there already: a file, or standard
/// output for "-", or nowhere for an empty name.
class ReportFile {
public:
    /// Throws UsageError when the file cannot be written.
    ReportFile(const std::string& file, const StandardStreams& streams);

    /// The line can be read when this returns. Says so on standard error when it cannot be written,
    /// once. Throws std::system_error when standard output fails.
    void write(const LoadReport& report);

private:
    const std::string file_;
    const StandardStreams& streams_;
    std::ofstream stream_;
};

}  // namespace workbench
