#include "readers/asks_alike.h"

#include <string_view>
#include <tuple>

namespace intake {

namespace {

/// The scheme, the server and the user of a URL; all of what is none.
std::string_view serverOf(const RequestRecord& request) {
    const std::string_view source = request.filename;
    const size_t slashes = source.find("//");
    return slashes == source.npos ? source
                                  : source.substr(0, source.find_first_of("/?", slashes + 2));
}

auto askerOf(const RequestRecord& request) {
    return std::tuple(serverOf(request),
                      std::tie(request.useAuth, request.userName, request.password),
                      std::tie(request.enableProxy, request.proxyMode, request.proxyUrl,
                               request.proxyUser, request.proxyPwd),
                      std::tie(request.useCustomHeaders, request.customHeaders));
}

}  // namespace

bool asksAlike(const RequestRecord& one, const RequestRecord& other) {
    return askerOf(one) == askerOf(other);
}

}  // namespace intake
