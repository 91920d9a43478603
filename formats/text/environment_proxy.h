#pragma once

#include <functional>
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

}  // namespace intake
