#pragma once

#include <string>
#include <vector>

#include "workbench/cli/run/InstanceState.h"
#include "workbench/cli/run/LiveInstance.h"
#include "workbench/lumo/Host.h"

namespace workbench {

/// The states as a JSON array, in one line. Times are in seconds.
std::string statesJson(const std::vector<InstanceState>& states);

/// The values of an instance, with its secrets hidden, and which parameters the plugin shows of it
/// just now. Host's thread.
std::string detailsJson(const lumo::Host& host, const LiveInstance& instance);

}  // namespace workbench
