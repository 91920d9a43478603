#include "tests/http/support/challenges.h"

namespace intake {

namespace {

std::string headerLines(const std::string& name, const std::vector<std::string>& values) {
    std::string lines;
    for (const std::string& value : values) {
        lines += name + ": " + value + "\r\n";
    }
    return lines;
}

std::string headerOf(const std::string& request, const std::string& name) {
    const std::string before = "\r\n" + name + ": ";
    const size_t start = request.find(before);
    if (start == std::string::npos) {
        return "";
    }
    const size_t value = start + before.size();
    return request.substr(value, request.find("\r\n", value) - value);
}

std::vector<std::string> headersOf(ScriptedServer& server, const std::string& name) {
    std::vector<std::string> values;
    for (const std::string& request : server.requests()) {
        values.push_back(headerOf(request, name));
    }
    return values;
}

}  // namespace

Reply challenge(const std::vector<std::string>& schemes, const std::string& body) {
    return reply("401 Unauthorized", body, headerLines("WWW-Authenticate", schemes));
}

Reply proxyChallenge(const std::vector<std::string>& schemes, const std::string& body) {
    return reply("407 Proxy Authentication Required", body,
                 headerLines("Proxy-Authenticate", schemes));
}

std::vector<std::string> proofs(ScriptedServer& server) {
    return headersOf(server, "Authorization");
}

std::vector<std::string> proxyProofs(ScriptedServer& proxy) {
    return headersOf(proxy, "Proxy-Authorization");
}

}  // namespace intake
