#include "platform/linux/curl/system_proxy.h"

#include <proxy.h>

#include <memory>
#include <string_view>

namespace intake {

namespace {

constexpr std::string_view DIRECT = "direct://";

struct FactoryDeleter {
    void operator()(pxProxyFactory* factory) const { px_proxy_factory_free(factory); }
};
struct ProxiesDeleter {
    void operator()(char** proxies) const { px_proxy_factory_free_proxies(proxies); }
};

}  // namespace

bool findSystemProxy(const std::string& url, std::string& proxy) {
    const std::unique_ptr<pxProxyFactory, FactoryDeleter> factory(px_proxy_factory_new());
    if (factory == nullptr) {
        return false;
    }
    const std::unique_ptr<char*, ProxiesDeleter> proxies(
        px_proxy_factory_get_proxies(factory.get(), url.c_str()));
    if (proxies == nullptr || *proxies == nullptr || *proxies == DIRECT) {
        return false;
    }
    proxy = *proxies;
    return true;
}

}  // namespace intake
