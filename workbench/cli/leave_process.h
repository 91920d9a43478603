#pragma once

namespace workbench {

/// Ends the process with this exit status, although threads of plugins may still be running.
[[noreturn]] void leaveProcess(int status);

}  // namespace workbench
