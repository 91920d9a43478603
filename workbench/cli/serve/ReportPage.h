#pragma once

#include <filesystem>
#include <map>
#include <stop_token>
#include <string>
#include <vector>

#include "workbench/cli/Redaction.h"
#include "workbench/cli/run/LoadReport.h"

namespace workbench {

/// No report of a load is longer, in bytes.
constexpr std::size_t longestReport = 16U << 10;

/// A page of a file with reports of loads, a line each, as `run --report` writes them. Reads the
/// disk: for jobs.
class ReportPage {
public:
    /// Which loads: of one instance, or with an empty name of all.
    struct Wanted {
        std::string instance;
        std::size_t from = 0;
        std::size_t count = 100;
    };

    explicit ReportPage(Wanted wanted) : wanted_(std::move(wanted)) {}

    /// Reads the lines, of a very long file the first ones.
    void read(const std::filesystem::path& file, const std::stop_token& stop);

    /// What was found, without the secrets.
    std::string json(const Redaction& redact) const;

private:
    struct Load {
        LoadReport report;
        std::string time;
    };
    struct Summary {
        std::size_t loads = 0;
        std::size_t bad = 0;
        std::string first;  // times
        std::string last;
    };

    static bool readLine(const std::string& line, Load& load);
    void summarise(const Load& load);
    void note(Load load);

    const Wanted wanted_;
    std::map<std::string, Summary> summaries_;  // by instance
    std::size_t count_ = 0;
    std::size_t unreadable_ = 0;
    bool isCut_ = false;
    std::vector<Load> loads_;
};

/// Whether a file begins with a report of a load.
bool isReport(const std::filesystem::path& file);

}  // namespace workbench
