#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace intake {

// What an environment says of proxies and libproxy overlooks.

/// Looks a variable up; null when it is not set.
using Environment = std::function<const char*(const char* name)>;

/// Whether no host at all is reached through a proxy: no_proxy=*.
bool exceptsEveryHost(const Environment& environment);

/// The proxy for a URL where it is a numeric address without a scheme. Otherwise empty.
std::string numericProxy(std::string_view url, const Environment& environment);

/// The hosts that are reached without a proxy, separated by commas, as libcurl reads them: a
/// domain begins with a dot, and "<local>" is `host` where that has no dot.
std::string proxyExceptions(std::string_view host, const Environment& environment);

/// A proxy, and the hosts that are reached without it.
struct SystemProxy {
    std::string address;     // empty for none
    std::string exceptions;  // as proxyExceptions() gives them
};

/// The proxy for a URL of a scheme and a host. `search` asks libproxy, unless no host is reached
/// through a proxy; it gives nothing where it did not find out, and then neither does this. What it
/// finds holds; libproxy has made the exceptions from that already.
std::optional<SystemProxy> systemProxy(std::string_view url, const Environment& environment,
                                       const std::function<std::optional<std::string>()>& search);

}  // namespace intake
