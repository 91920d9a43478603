#include "platform/linux/curl/system_proxy.h"

#include <proxy.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>

#include "formats/source/environment_proxy.h"

namespace intake {

namespace {

constexpr std::string_view DIRECT = "direct://";

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

}  // namespace

CallOutcome findSystemProxy(const std::string& url, const EndMark& endMark,
                            std::chrono::milliseconds limit, std::string& proxy,
                            std::string& bypass) {
    thread_local AbandonableCalls searches;
    CallOutcome outcome = CallOutcome::DONE;
    const auto search = [&] {
        const auto found = std::make_shared<std::string>();
        const auto call = [url, found] { *found = askLibproxy(url); };
        outcome = searches.make(call, endMark, limit);
        return outcome == CallOutcome::DONE ? std::optional(*found) : std::nullopt;
    };
    const Environment environment = [](const char* name) { return std::getenv(name); };
    const SystemProxy known = systemProxy(url, environment, search).value_or(SystemProxy{});
    proxy = known.address;
    bypass = known.exceptions;
    return outcome;
}

}  // namespace intake
