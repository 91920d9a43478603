#pragma once

#include <string>

#include "workbench/cli/serve/StartFolder.h"

namespace workbench {

/// Names of files as JSON.
std::string fileListJson(const StartFolder::Listing& listing);

}  // namespace workbench
