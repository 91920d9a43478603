#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace intake {

/// Every word and every text in quotes or brackets of a query: its names, and more.
std::vector<std::string> namesIn(std::string_view query);

}  // namespace intake
