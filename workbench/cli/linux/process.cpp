#include "workbench/cli/process.h"

#include <cstdlib>

namespace workbench {

std::filesystem::path executablePath() {
    return std::filesystem::read_symlink("/proc/self/exe");
}

void leaveProcess(int status) {
    std::exit(status);
}

}  // namespace workbench
