#pragma once

#include <string>

namespace intake {

/// Makes a named pipe that nobody writes to.
void makePipe(const std::string& path);

}  // namespace intake
