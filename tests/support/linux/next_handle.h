#pragma once

#include "platform/Platform.h"

namespace intake {

/// The handle that the next file gets. It stays the same as long as no file is left open.
inline Files::Handle nextHandle() {
    Files& files = systemPlatform().files;
    const Files::Handle handle = files.open("/proc/self/exe");
    files.close(handle);
    return handle;
}

}  // namespace intake
