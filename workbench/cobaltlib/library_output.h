#pragma once

#include <string_view>

#include "workbench/cobalt/ScriptError.h"

namespace cobaltlib {

/// Prints "`what`: line 1, column 2: message" through the print function that was set, the host's
/// console when none was. Host's thread.
void report(std::string_view what, const cobalt::ScriptError& error);

}  // namespace cobaltlib
