#pragma once

#include <string>
#include <string_view>

namespace workbench {

/// What is wrong with a text that is no JSON: the place, what was expected there, and what stands
/// there instead. `message` is what the parser said of `source`; columns count characters.
std::string jsonFault(std::string_view message, std::string_view source);

}  // namespace workbench
