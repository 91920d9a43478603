#pragma once

#include <stop_token>
#include <string>
#include <vector>

#include "workbench/cli/Redaction.h"
#include "workbench/cli/serve/ReportIndex.h"

namespace workbench {

/// A page of a report, with what is told of the whole. Reads the disk: for jobs.
class ReportPage {
public:
    /// Which loads: of one instance, or with an empty name of all.
    struct Wanted {
        std::string instance;
        std::size_t from = 0;
        std::size_t count = 100;
    };

    /// Reads the lines of the page.
    ReportPage(const ReportIndex& index, const Wanted& wanted);

    /// What was found, without the secrets.
    std::string json(const Redaction& redact) const;

private:
    const ReportIndex& index_;
    std::size_t count_ = 0;  // of all, of which some are in the page
    std::vector<ReportedLoad> loads_;
};

}  // namespace workbench
