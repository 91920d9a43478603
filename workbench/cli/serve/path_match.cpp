#include "workbench/cli/serve/path_match.h"

#include "workbench/serve/WebMessage.h"

namespace workbench {

std::optional<std::string> matchPath(std::string_view route, std::string_view path) {
    const auto star = route.find('*');
    if (star == std::string_view::npos) return route == path ? std::optional("") : std::nullopt;
    const std::string_view before = route.substr(0, star);
    const std::string_view behind = route.substr(star + 1);
    const bool fits = path.size() > before.size() + behind.size() && path.starts_with(before) &&
                      path.ends_with(behind);
    if (!fits) return std::nullopt;
    path.remove_prefix(before.size());
    path.remove_suffix(behind.size());
    if (path.find('/') != std::string_view::npos) return std::nullopt;
    return serve::decoded(path, false);
}

}  // namespace workbench
