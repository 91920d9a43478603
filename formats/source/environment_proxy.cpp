#include "formats/source/environment_proxy.h"

#include "formats/text/ascii.h"
#include "formats/text/trim.h"

namespace intake {

namespace {

constexpr std::string_view EVERY_HOST = "*";
constexpr std::string_view EVERY_HOST_OF = "*.";
constexpr std::string_view LOCAL_HOSTS = "<local>";
constexpr std::string_view SEPARATORS = ", \t";

/// Null when it is set in neither way of writing it.
const char* variable(const Environment& environment, const char* lowerCase, const char* upperCase) {
    const char* const value = environment(lowerCase);
    return value == nullptr ? environment(upperCase) : value;
}

std::string_view exceptions(const Environment& environment) {
    const char* const value = variable(environment, "no_proxy", "NO_PROXY");
    return value == nullptr ? "" : value;
}

/// Empty for what concerns other hosts only.
std::string_view forLibcurl(std::string_view entry, std::string_view host) {
    if (entry == LOCAL_HOSTS) {
        return host.find('.') == std::string_view::npos ? host : "";
    }
    return entry.starts_with(EVERY_HOST_OF) ? entry.substr(1) : entry;
}

std::string_view hostOf(std::string_view url) {
    return url.substr(url.find("://") + 3);
}

}  // namespace

bool exceptsEveryHost(const Environment& environment) {
    return exceptions(environment) == EVERY_HOST;
}

std::string numericProxy(std::string_view url, const Environment& environment) {
    const char* proxy =
        url.starts_with("https:") ? variable(environment, "https_proxy", "HTTPS_PROXY") : nullptr;
    proxy = proxy == nullptr ? variable(environment, "http_proxy", "HTTP_PROXY") : proxy;
    const bool numeric = proxy != nullptr && (isDigit(*proxy) || *proxy == '[');
    return numeric ? std::string("http://") + proxy : "";
}

std::string proxyExceptions(std::string_view host, const Environment& environment) {
    std::string read;
    std::string_view left = trimmedStart(exceptions(environment), SEPARATORS);
    while (!left.empty()) {
        const std::string_view entry = left.substr(0, left.find_first_of(SEPARATORS));
        const std::string_view known = forLibcurl(entry, host);
        read += (read.empty() || known.empty() ? "" : ",") + std::string(known);
        left = trimmedStart(left.substr(entry.size()), SEPARATORS);
    }
    return read;
}

std::optional<SystemProxy> systemProxy(std::string_view url, const Environment& environment,
                                       const std::function<std::optional<std::string>()>& search) {
    if (exceptsEveryHost(environment)) {
        return SystemProxy{};
    }
    const std::optional<std::string> found = search();
    if (!found) {
        return std::nullopt;
    }
    if (!found->empty()) {
        return SystemProxy{*found, ""};
    }
    return SystemProxy{numericProxy(url, environment), proxyExceptions(hostOf(url), environment)};
}

}  // namespace intake
