#pragma once

#include <chrono>
#include <cstddef>
#include <functional>

#include "workbench/probe/explain/Ladder.h"

namespace probe {

/// Adds to each of the first `most` remedies what is still to be mended once it is used, for what
/// one change does not mend takes several; those that lead nowhere are dropped. `look` looks at the
/// same source by other settings; none begins after `end`.
void completeRemedies(const Settings& settings, const std::function<Ladder(const Settings&)>& look,
                      std::size_t most, std::chrono::steady_clock::time_point end, Ladder& ladder);

}  // namespace probe
