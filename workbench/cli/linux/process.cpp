#include "workbench/cli/process.h"

#include <cstdio>
#include <cstdlib>

#include "workbench/cli/ExitStatus.h"

namespace workbench {

std::filesystem::path executablePath() {
    return std::filesystem::read_symlink("/proc/self/exe");
}

/// What gave no answer in time may still be inside a library, which the orderly way would clean up
/// under its hands.
void leaveProcess(int status) {
    if (status == static_cast<int>(ExitStatus::NoAnswer)) {
        std::fflush(nullptr);
        std::_Exit(status);
    }
    std::exit(status);
}

}  // namespace workbench
