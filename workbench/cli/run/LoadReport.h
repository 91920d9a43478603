#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "workbench/cli/LoadWatch.h"

namespace workbench {

/// What a load came to. `Late` is said of one that is still waited for.
enum class LoadOutcome { Loaded, Empty, Failed, NotExecuted, ActionFailed, Late };

/// How programs call it.
const char* nameOf(LoadOutcome outcome);

/// Whether the load brought what it could.
bool isGood(LoadOutcome outcome);

/// What is told of one load. Plain values; any thread.
struct LoadReport {
    std::string instance;
    LoadOutcome outcome = LoadOutcome::Loaded;
    std::size_t records = 0;        // that were written
    std::size_t recordsBefore = 0;  // by the load before
    std::size_t leftOver = 0;       // fields and entries in the store that are from older loads
    double leftOverAge = 0;         // of the oldest of them, in seconds
    std::size_t bytes = 0;          // of what was written
    double seconds = 0;             // from its begin to its answer
    std::string error;              // in words; empty when there is none
    std::chrono::system_clock::time_point time;
};

/// The report of an answer: outcome, records, bytes and error.
LoadReport reportOf(const Outcome& outcome);

/// 2027-01-31T18:05:09.042Z
std::string isoTime(std::chrono::system_clock::time_point time);

/// The report as a JSON object, in one line with its line feed.
std::string lineOf(const LoadReport& report);

}  // namespace workbench
