#include "platform/linux/curl/system_proxy.h"

#include <proxy.h>

#include <cstdlib>
#include <memory>
#include <string_view>

#include "formats/text/ascii.h"
#include "platform/linux/base/AbandonableCalls.h"

namespace intake {

namespace {

constexpr std::string_view DIRECT = "direct://";
constexpr std::string_view EVERY_HOST = "*";

struct FactoryDeleter {
    void operator()(pxProxyFactory* factory) const { px_proxy_factory_free(factory); }
};
struct ProxiesDeleter {
    void operator()(char** proxies) const { px_proxy_factory_free_proxies(proxies); }
};

/// What libproxy names first; empty for a direct connection. It can block for minutes.
std::string askLibproxy(const std::string& url) {
    const std::unique_ptr<pxProxyFactory, FactoryDeleter> factory(px_proxy_factory_new());
    if (factory == nullptr) {
        return "";
    }
    const std::unique_ptr<char*, ProxiesDeleter> proxies(
        px_proxy_factory_get_proxies(factory.get(), url.c_str()));
    const bool direct = proxies == nullptr || *proxies == nullptr || *proxies == DIRECT;
    return direct ? "" : *proxies;
}

/// Null when it is set in neither way of writing it.
const char* variable(const char* lowerCase, const char* upperCase) {
    const char* const value = std::getenv(lowerCase);
    return value == nullptr ? std::getenv(upperCase) : value;
}

/// The environment's proxy where it is a numeric address without a scheme; libproxy takes that for
/// none. Otherwise empty.
std::string numericProxy(std::string_view url) {
    const char* proxy =
        url.starts_with("https:") ? variable("https_proxy", "HTTPS_PROXY") : nullptr;
    proxy = proxy == nullptr ? variable("http_proxy", "HTTP_PROXY") : proxy;
    const bool numeric = proxy != nullptr && (isDigit(*proxy) || *proxy == '[');
    return numeric ? std::string("http://") + proxy : "";
}

}  // namespace

bool findSystemProxy(const std::string& url, const EndMark& endMark,
                     std::chrono::milliseconds limit, std::string& proxy, std::string& bypass) {
    const char* const exceptions = variable("no_proxy", "NO_PROXY");
    if (exceptions != nullptr && exceptions == EVERY_HOST) {  // libproxy does not know it
        return false;
    }
    const auto found = std::make_shared<std::string>();
    const auto call = [url, found] { *found = askLibproxy(url); };
    thread_local AbandonableCalls searches;
    if (searches.make(call, endMark, limit) != CallOutcome::DONE) {
        return false;
    }
    proxy = *found;
    bypass.clear();
    if (proxy.empty()) {
        proxy = numericProxy(url);
        bypass = exceptions == nullptr ? "" : exceptions;
    }
    return !proxy.empty();
}

}  // namespace intake
