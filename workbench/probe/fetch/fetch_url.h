#pragma once

#include "workbench/probe/fetch/Fetched.h"
#include "workbench/probe/fetch/fetch_source.h"

namespace probe {

/// Fetches what stands behind an address, see fetch(). Throws FetchFailure.
Fetched fetchUrl(const Settings& settings, const Source& source, double timeoutSeconds);

}  // namespace probe
