#pragma once

#include <string>
#include <vector>

#include "workbench/cli/Redaction.h"
#include "workbench/cli/Table.h"
#include "workbench/cli/store_changes.h"

namespace workbench {

/// What came of a load that changes nothing.
struct DryRunResult {
    std::string outcome;
    std::string error;
    std::string script;
    std::size_t records = 0;
    double seconds = 0;
    Table table;  // what was loaded
    StoreChanges changes;
    std::vector<std::string> commands;  // that the post-update action would send
    std::string action;
    std::string actionError;
};

/// The result as JSON without its secrets, and of a long script the start.
std::string dryRunJson(const DryRunResult& result, const Redaction& redact);

}  // namespace workbench
