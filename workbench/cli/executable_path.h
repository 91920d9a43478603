#pragma once

#include <filesystem>

namespace workbench {

/// The file that this process runs. Throws std::filesystem::filesystem_error when it is unknown.
std::filesystem::path executablePath();

}  // namespace workbench
