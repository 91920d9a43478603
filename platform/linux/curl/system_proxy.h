#pragma once

#include <chrono>
#include <string>

#include "formats/source/EndMark.h"
#include "platform/linux/base/AbandonableCalls.h"

namespace intake {

/// The proxy that the system's configuration names for a URL, its network detection and its scripts
/// included, and what exceptions are still to be made from it, separated by commas. The URL is a
/// scheme and a host. The proxy is empty when there is none. It is not known unless the search is
/// done by `limit` and before the end mark is set: the network may be asked for minutes, which then
/// goes on by itself.
CallOutcome findSystemProxy(const std::string& url, const EndMark& endMark,
                            std::chrono::milliseconds limit, std::string& proxy,
                            std::string& bypass);

}  // namespace intake
