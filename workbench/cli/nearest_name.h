#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace workbench {

/// The name among `names` that takes the fewest typing errors to become `wanted`, letter case
/// aside; the first of equals. Empty when there are no names.
std::string nearestName(std::string_view wanted, const std::vector<std::string>& names);

}  // namespace workbench
