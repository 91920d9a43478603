#include "platform/windows/base/last_error.h"

#include <windows.h>

#include <system_error>

namespace intake {

void throwLastError(const char* call) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), call);
}

}  // namespace intake
