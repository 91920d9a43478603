#pragma once

#include <string>

namespace intake {

/// The proxy that the system's configuration names for a URL, its network detection included. False
/// when it names none. Can block for a minute and more while the network is asked.
bool findSystemProxy(const std::string& url, std::string& proxy);

}  // namespace intake
