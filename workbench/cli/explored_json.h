#pragma once

#include <cstddef>
#include <string>

#include "workbench/probe/explore/explore_source.h"

namespace workbench {

/// What was found in a source, for programs. `from`: how many entries were passed over.
std::string exploredJson(const std::string& source, const probe::Explored& explored,
                         std::size_t from);

}  // namespace workbench
