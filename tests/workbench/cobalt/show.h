#pragma once

#include <string>
#include <string_view>

#include "workbench/cobalt/Store.h"

namespace cobalt {

/// A value in one line: "text", 7.50, {member: value}, [key: value].
std::string show(const Value& value);

/// A line "name = value" for every field.
std::string show(const Store& store);

/// "line:column message".
std::string show(const ScriptError& error);

/// The fields after executing the script in an empty store, or the error.
std::string execute(std::string_view script);

}  // namespace cobalt
