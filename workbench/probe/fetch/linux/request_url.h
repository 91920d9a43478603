#pragma once

#include <string>

#include "workbench/probe/Settings.h"

namespace probe {

/// The address that the plugin asks for: with the number that keeps caches from answering, and with
/// what may not stand in an address escaped. Throws FetchFailure for what is none.
std::string requestUrl(const Settings& settings);

}  // namespace probe
