#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace probe {

/// How many typing errors make `wanted` of the name, letter case aside.
std::size_t typingErrors(std::string_view wanted, std::string_view name);

/// The name among `names` that takes the fewest typing errors to become `wanted`, letter case
/// aside; the first of equals. Empty when there are no names.
std::string nearestName(std::string_view wanted, const std::vector<std::string>& names);

}  // namespace probe
