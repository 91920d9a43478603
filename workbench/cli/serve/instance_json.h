#pragma once

#include <string>
#include <vector>

#include "workbench/cli/run/InstanceState.h"

namespace workbench {

/// The states as a JSON array, in one line. Times are in seconds.
std::string statesJson(const std::vector<InstanceState>& states);

}  // namespace workbench
