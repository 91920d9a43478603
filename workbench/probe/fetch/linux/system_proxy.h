#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "formats/source/environment_proxy.h"

namespace probe {

/// The proxy that the system's settings name for a URL of a scheme and a host, as the plugin finds
/// it. Nothing when the system does not say within `limit`.
std::optional<intake::SystemProxy> systemProxy(const std::string& scheme, const std::string& host,
                                               std::chrono::milliseconds limit);

}  // namespace probe
