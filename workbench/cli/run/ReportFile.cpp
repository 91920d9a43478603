#include "workbench/cli/run/ReportFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "workbench/cli/UsageError.h"

namespace workbench {

ReportFile::ReportFile(const std::string& file, const StandardStreams& streams)
    : file_(file), streams_(streams) {
    if (file.empty() || file == "-") return;
    stream_.open(file, std::ios::app | std::ios::binary);
    if (!stream_)
        throw UsageError("The report cannot be written to " + file + ": " + std::strerror(errno) +
                         ".");
}

void ReportFile::write(const LoadReport& report) {
    if (file_ == "-") return streams_.writeResult(lineOf(report));
    if (!stream_.is_open()) return;
    stream_ << lineOf(report) << std::flush;
    if (stream_) return;
    std::fprintf(stderr, "The report cannot be written to %s any more.\n", file_.c_str());
    stream_.close();
}

}  // namespace workbench
