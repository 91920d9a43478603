#include "workbench/cli/leave_process.h"

#include <cstdlib>

namespace workbench {

void leaveProcess(int status) {
    std::exit(status);
}

}  // namespace workbench
