#include "workbench/serve/Gate.h"

#include <algorithm>
#include <array>

#include "formats/text/ascii.h"
#include "formats/text/trim.h"
#include "workbench/serve/secret.h"

namespace serve {

namespace {

bool isWriting(const WebRequest& request) {
    return request.method != "GET" && request.method != "HEAD";
}

bool isApi(const WebRequest& request) {
    return request.path.starts_with("/api/");
}

bool isJson(const WebRequest& request) {
    const std::string& type = request.header("Content-Type");
    return intake::equalIgnoringCase(
        intake::trimmed(std::string_view(type).substr(0, type.find(';')), " \t"),
        "application/json");
}

}  // namespace

Gate::Gate(uint16_t port, std::string session)
    : port_(std::to_string(port)), token_(newSecret()), session_(std::move(session)) {}

bool Gate::isOurHost(const std::string& host) const {
    constexpr std::array names{"127.0.0.1:", "[::1]:", "localhost:"};
    return std::any_of(names.begin(), names.end(),
                       [&](const char* name) { return host == name + port_; });
}

/// The name has the port in it, for the cookies of one host go to all its ports.
bool Gate::hasCookie(const std::string& cookies) const {
    std::string_view rest = cookies;
    while (!rest.empty()) {
        const std::string_view pair = rest.substr(0, rest.find(';'));
        const std::string_view cookie = intake::trimmed(pair, " ");
        const std::string name = "intake-" + port_ + "=";
        if (cookie.starts_with(name) && isSecret(cookie.substr(name.size()), session_)) return true;
        rest.remove_prefix(std::min(rest.size(), pair.size() + 1));
    }
    return false;
}

bool Gate::isLogin(const WebRequest& request) {
    return request.method == "POST" && request.path == "/api/v1/session";
}

std::optional<WebResponse> Gate::refusal(const WebRequest& request, bool isUpgrade) const {
    const std::string& host = request.header("Host");
    if (!isOurHost(host)) return serve::refusal(403, "This is not the name of this server.");
    const bool changes = isWriting(request) || isUpgrade;
    if (changes && request.header("Origin") != "http://" + host)
        return serve::refusal(403, "This request comes from another page.");
    if (isWriting(request) && !isJson(request))
        return serve::refusal(415, "Only application/json is taken.");
    const bool needsCookie = isUpgrade || (isApi(request) && !isLogin(request));
    if (needsCookie && !hasCookie(request.header("Cookie")))
        return serve::refusal(401, "Open the address that was printed when the server began.");
    return std::nullopt;
}

WebResponse Gate::logIn(const std::string& token) const {
    if (!isSecret(token, token_))
        return serve::refusal(401, "This is not the token of this server.");
    WebResponse response;
    response.status = 204;
    response.headers.emplace_back(
        "Set-Cookie", "intake-" + port_ + "=" + session_ + "; Path=/; HttpOnly; SameSite=Strict");
    return response;
}

}  // namespace serve
