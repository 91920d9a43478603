#include "workbench/cli/executable_path.h"

namespace workbench {

std::filesystem::path executablePath() {
    return std::filesystem::read_symlink("/proc/self/exe");
}

}  // namespace workbench
