#pragma once

#include <fcntl.h>
#include <unistd.h>

namespace intake {

/// The handle that the next file gets: the lowest that is free. It stays the same as long as no
/// file is left open.
inline int nextHandle() {
    const int handle = open("/", O_RDONLY | O_CLOEXEC);
    close(handle);
    return handle;
}

}  // namespace intake
