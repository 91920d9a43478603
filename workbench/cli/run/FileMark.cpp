#include "workbench/cli/run/FileMark.h"

#include <filesystem>

namespace workbench {

FileMark markOf(const std::string& file) {
    std::error_code error;
    const auto time = std::filesystem::last_write_time(file, error);
    if (error) return {};
    const auto size = std::filesystem::file_size(file, error);
    if (error) return {};
    return {true, static_cast<std::int64_t>(time.time_since_epoch().count()), size,
            fileIdentity(file)};
}

}  // namespace workbench
