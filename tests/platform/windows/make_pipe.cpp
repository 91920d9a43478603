#include "tests/platform/make_pipe.h"

#include <windows.h>

#include <system_error>

namespace intake {

std::string makePipe(const std::string& directory) {
    // Pipes do not stand in directories here; the directory's name makes this one's unique. It
    // stays until the process ends.
    const std::string name = "\\\\.\\pipe\\" + directory.substr(directory.find_last_of("\\/") + 1);
    if (CreateNamedPipeA(name.c_str(), PIPE_ACCESS_OUTBOUND, PIPE_TYPE_BYTE, 1, 0, 0, 0, nullptr) ==
        INVALID_HANDLE_VALUE) {
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), name);
    }
    return name;
}

}  // namespace intake
