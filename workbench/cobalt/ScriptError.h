#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cobalt {

/// Why a script or an expression could not be parsed or executed, and where. Lines and columns
/// count from 1, columns in characters.
struct ScriptError {
    std::size_t line = 1;
    std::size_t column = 1;
    std::string message;  ///< what was expected, in words, without the place and without a line end
};

/// The error at that byte of `text`.
ScriptError errorAt(std::string_view text, std::size_t offset, std::string message);

}  // namespace cobalt
