#include "workbench/cli/process.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <system_error>

namespace workbench {

std::filesystem::path executablePath() {
    constexpr std::size_t longest = 0x8000;  // the system knows no longer path
    std::wstring path(longest, L'\0');
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(longest));
    if (length == 0)
        throw std::filesystem::filesystem_error(
            "Could not find this program's file",
            std::error_code(static_cast<int>(GetLastError()), std::system_category()));
    path.resize(length);
    return path;
}

/// The orderly way ends the other threads wherever they are and then lets each library clean up,
/// which waits for ever for a lock that one of them held.
void leaveProcess(int status) {
    std::fflush(nullptr);
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(status));
    std::abort();  // never reached
}

}  // namespace workbench
