#pragma once

#include <string>

#include "workbench/cli/Options.h"
#include "workbench/probe/explore/explore_source.h"

namespace workbench {

/// What was found in a source, as a table whose last column, the settings, is never cut: it is
/// there to be copied. `isCut`: the others are, as on a terminal.
std::string exploredTable(const std::string& source, const probe::Explored& explored, bool isCut);

/// What is said in the place of a table without rows.
std::string exploredNothing(const std::string& source, const probe::Explored& explored,
                            const Options& options);

/// How to go on from what was shown. `source` is empty for what is named by settings alone.
std::string exploredAdvice(const std::string& source, const probe::Explored& explored);

}  // namespace workbench
