#include "platform/linux/curl/system_proxy.h"

#include <proxy.h>

#include <memory>
#include <string_view>

#include "platform/linux/base/abandonable_call.h"

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

bool findSystemProxy(const std::string& url, const EndMark& endMark,
                     std::chrono::milliseconds limit, std::string& proxy) {
    const auto found = std::make_shared<std::string>();
    const auto call = [url, found] { *found = askLibproxy(url); };
    if (makeAbandonableCall(call, endMark, limit) != CallOutcome::DONE || found->empty()) {
        return false;
    }
    proxy = *found;
    return true;
}

}  // namespace intake
