#pragma once

#include <chrono>
#include <string>

namespace probe {

/// The proxy that the system's settings name for a URL, empty for none, as the plugin finds it.
/// Throws FetchFailure when the system does not say within `limit`.
std::string systemProxy(const std::string& url, std::chrono::milliseconds limit);

}  // namespace probe
