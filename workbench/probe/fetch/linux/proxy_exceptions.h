#pragma once

#include <string>
#include <string_view>

namespace probe {

/// Whether libcurl asks the host without a proxy: a numeric address when it or its network is in
/// the list (`10.0.0.0/8`), a name when it or a domain of it is. The host is in lower case; commas
/// separate the list. libcurl itself does not tell which way it went.
bool isExcepted(const std::string& host, std::string_view list);

}  // namespace probe
