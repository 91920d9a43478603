#pragma once

#include <string>

#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/run/LoadReport.h"

namespace workbench {

/// Writes the members of a load as a page is told them. The time is given as a text, `line` is what
/// a log says of it.
void writeLoad(const LoadReport& report, const std::string& time, const std::string& line,
               JsonWriter& out);

}  // namespace workbench
