#pragma once

#include <functional>
#include <string>

#include "tests/faults/allocations.h"

namespace intake {

/// What became of something that needs memory.
struct Attempt {
    bool success = false;
    std::string result;               // of a success, or why there is none
    const char* complaint = nullptr;  // what is wrong whether there was memory or not
    int64_t keptBlocks = 0;           // that are to stay
};

using Attempts = std::function<Attempt()>;

/// Makes attempts in which every allocation fails in turn, in child processes, each of which calls
/// `begin` once to have what makes them. Each attempt must fail or have the right result, must keep
/// no memory, and the next one must be right. Returns a line for each that is not so, but for
/// faults of libraries that are known.
std::string memoryFaults(const std::function<Attempts()>& begin, Failing failing);

}  // namespace intake
