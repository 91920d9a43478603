#pragma once

#include <string>
#include <vector>

#include "workbench/probe/Settings.h"

namespace probe {

/// The lines that a request over HTTP bears beside those of the library, as libcurl takes them: a
/// name alone with a colon is not sent, one with a semicolon is sent without a value. Throws
/// FetchFailure for a line that cannot be sent; it shows no values.
std::vector<std::string> requestHeaders(const Settings& settings);

}  // namespace probe
