#pragma once

#include <chrono>
#include <string>

#include "formats/source/EndMark.h"

namespace intake {

/// The proxy that the system's configuration names for a URL, its network detection and its scripts
/// included, and what exceptions are still to be made from it, separated by commas. The URL is a
/// scheme and a host. False when it names none, and when that is not known by `limit` or before the
/// end mark is set: the network may be asked for minutes, which then goes on by itself.
bool findSystemProxy(const std::string& url, const EndMark& endMark,
                     std::chrono::milliseconds limit, std::string& proxy, std::string& bypass);

}  // namespace intake
