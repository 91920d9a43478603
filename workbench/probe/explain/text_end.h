#pragma once

#include <string_view>

namespace probe {

/// Whether a place, such as "line 3, column 7", is the end of a text, or of what is written in it.
bool namesEnd(std::string_view place, std::string_view text);

}  // namespace probe
