#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace probe {

struct SystemProxy {
    std::string address;     // empty for none
    std::string exceptions;  // hosts and domains that are asked without it, separated by commas
};

/// The proxy that the system's settings name for a URL of a scheme and a host, as the plugin finds
/// it. Nothing when the system does not say within `limit`.
std::optional<SystemProxy> systemProxy(const std::string& scheme, const std::string& host,
                                       std::chrono::milliseconds limit);

}  // namespace probe
