#pragma once

#include <stop_token>
#include <string>
#include <vector>

#include "workbench/cli/Options.h"

namespace workbench {

/// Why an instance brings what it brings, as `explain --out json` says, in a process of its own
/// that gets the scene by its standard input. Blocks until it ends, or a stop is requested; any
/// thread. Empty when there was no answer in time. Throws std::system_error.
std::string explainInChild(const std::string& scene, int32_t fontEncoding,
                           const std::string& plugin, const std::stop_token& stop);

}  // namespace workbench
