#pragma once

#include <memory>
#include <string_view>

#include "workbench/cobalt/Program.h"

namespace cobalt {

/// Parses the text of an Expression. Throws ParseFailure.
std::unique_ptr<const Program> parseProgram(std::string_view text);

}  // namespace cobalt
