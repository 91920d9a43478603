#include "workbench/cli/serve/Routes.h"

#include "workbench/cli/serve/path_match.h"

namespace workbench {

namespace {

constexpr std::string_view root = "/api/v1/";

}  // namespace

bool Routes::answer(const serve::WebRequest& request, const serve::Reply& reply) const {
    if (!request.path.starts_with(root)) return false;
    const std::string_view path = std::string_view(request.path).substr(root.size());
    const std::string_view asked = request.method;
    const std::string_view method = asked == "HEAD" ? "GET" : asked;
    for (const Known& route : routes_) {
        auto names = method == route.method ? matchPath(route.path, path) : std::nullopt;
        if (!names) continue;
        route.answer({request, std::move(*names), reply});
        return true;
    }
    return false;
}

}  // namespace workbench
