#pragma once

#include <string>

namespace intake {

/// Makes a named pipe that nobody writes to, in `directory` where pipes stand in directories.
/// Returns its path.
std::string makePipe(const std::string& directory);

}  // namespace intake
