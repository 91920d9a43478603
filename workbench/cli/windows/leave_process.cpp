#include "workbench/cli/leave_process.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>

namespace workbench {

/// The orderly way ends the other threads wherever they are and then lets each library clean up,
/// which waits for ever for a lock that one of them held.
void leaveProcess(int status) {
    std::fflush(nullptr);
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(status));
    std::abort();  // never reached
}

}  // namespace workbench
