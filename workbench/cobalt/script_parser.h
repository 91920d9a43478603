#pragma once

#include <deque>
#include <string_view>
#include <variant>

#include "workbench/cobalt/ScriptError.h"
#include "workbench/cobalt/Target.h"
#include "workbench/cobalt/Value.h"

namespace cobalt {

struct Assignment {
    Target target;
    Value value;
};

/// A deque, which grows without copying and can be let go of from the front.
using Assignments = std::deque<Assignment>;

/// Parses a whole script: assignments, each ended by ';'. The assignments refer to the text.
std::variant<Assignments, ScriptError> parseScript(std::string_view script);

}  // namespace cobalt
