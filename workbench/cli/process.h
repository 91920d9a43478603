#pragma once

#include <filesystem>

namespace workbench {

/// The file that this process runs. Throws std::filesystem::filesystem_error when it is unknown.
std::filesystem::path executablePath();

/// Ends the process with this exit status, although threads of plugins may still be running.
[[noreturn]] void leaveProcess(int status);

}  // namespace workbench
