#pragma once

#include <cstdint>
#include <cstdlib>

namespace intake {

/// How much is tried: all of it where INTAKE_FAULTS is set, as `./test faults` does.
inline bool triesAllFaults() {
    return std::getenv("INTAKE_FAULTS") != nullptr;
}

/// The distance between two tries of `count`: of a large number only some hundred are made.
inline uint64_t faultStep(uint64_t count, uint64_t most = 300) {
    return triesAllFaults() || count <= most ? 1 : (count + most - 1) / most;
}

}  // namespace intake
