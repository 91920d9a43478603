#pragma once

namespace intake {

/// Throws the calling thread's last error as std::system_error. `call` is what failed.
[[noreturn]] void throwLastError(const char* call);

}  // namespace intake
