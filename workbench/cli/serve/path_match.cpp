#include "workbench/cli/serve/path_match.h"

#include "workbench/serve/WebMessage.h"

namespace workbench {

namespace {

/// The first segment, which is taken off the path; nothing behind the last one.
std::optional<std::string_view> takeSegment(std::optional<std::string_view>& path) {
    if (!path) return std::nullopt;
    const std::string_view whole = *path;
    const auto end = whole.find('/');
    path.reset();
    if (end != std::string_view::npos) path = whole.substr(end + 1);
    return whole.substr(0, end);
}

}  // namespace

std::optional<std::vector<std::string>> matchPath(std::string_view route, std::string_view path) {
    std::vector<std::string> names;
    std::optional<std::string_view> wanted = route;
    std::optional<std::string_view> found = path;
    while (wanted || found) {
        const auto expected = takeSegment(wanted);
        const auto segment = takeSegment(found);
        const bool isName = expected == "*" && segment && !segment->empty();
        if (isName) {
            names.push_back(serve::decoded(*segment, false));
        } else if (expected != segment) {
            return std::nullopt;
        }
    }
    return names;
}

}  // namespace workbench
