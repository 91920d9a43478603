#include "workbench/probe/fetch/linux/system_proxy.h"

#include <proxy.h>

#include <cstdlib>
#include <future>
#include <memory>
#include <string_view>
#include <thread>

namespace probe {

namespace {

struct Cleanup {
    void operator()(pxProxyFactory* factory) const { px_proxy_factory_free(factory); }
    void operator()(char** proxies) const { px_proxy_factory_free_proxies(proxies); }
};

std::string findProxy(const std::string& url) {
    constexpr std::string_view direct = "direct://";
    const std::unique_ptr<pxProxyFactory, Cleanup> factory(px_proxy_factory_new());
    if (factory == nullptr) return "";
    const std::unique_ptr<char*, Cleanup> proxies(
        px_proxy_factory_get_proxies(factory.get(), url.c_str()));
    const bool isDirect = proxies == nullptr || *proxies == nullptr || *proxies == direct;
    return isDirect ? "" : *proxies;
}

}  // namespace

/// The search cannot be broken off, so that a thread of its own is left alone with one that hangs.
std::optional<intake::SystemProxy> systemProxy(const std::string& scheme, const std::string& host,
                                               std::chrono::milliseconds limit) {
    const std::string url = scheme + "://" + host;
    const auto search = [&]() -> std::optional<std::string> {
        std::packaged_task<std::string()> task([url] { return findProxy(url); });
        std::future<std::string> proxy = task.get_future();
        std::thread(std::move(task)).detach();
        if (proxy.wait_for(limit) != std::future_status::ready) return std::nullopt;
        return proxy.get();
    };
    return intake::systemProxy(
        url, [](const char* name) { return std::getenv(name); }, search);
}

}  // namespace probe
