#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

/// What the stars of a route's path, each a whole segment, stand for in the path of a request,
/// decoded: "league" for "instances/*/load" and "instances/league/load". Nothing where the paths
/// differ.
std::optional<std::vector<std::string>> matchPath(std::string_view route, std::string_view path);

}  // namespace workbench
