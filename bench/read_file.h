#pragma once

#include <string>

namespace bench {

/// The whole of a file. Throws std::runtime_error, naming it, when it cannot be read.
std::string readFile(const std::string& path);

}  // namespace bench
