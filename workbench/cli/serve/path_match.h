#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace workbench {

/// What the star of a route's path stands for in the path of a request, decoded: "league" for
/// "instances/*/load" and "instances/league/load". Empty where the route has no star; nothing where
/// the paths differ.
std::optional<std::string> matchPath(std::string_view route, std::string_view path);

}  // namespace workbench
