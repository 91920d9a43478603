#include "platform/linux/LinuxFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace intake {

namespace {

int descriptor(Files::Handle file) {
    return static_cast<int>(file);
}

bool isRegularFile(int file) {
    struct stat status {};
    if (fstat(file, &status) != 0) {
        return false;
    }
    if (S_ISREG(status.st_mode)) {
        return true;
    }
    errno = S_ISDIR(status.st_mode) ? EISDIR : ENOTSUP;
    return false;
}

}  // namespace

Files::Handle LinuxFiles::open(const char* path) {
    // Opening a pipe that nobody writes to would otherwise wait.
    const int file = ::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0 || isRegularFile(file)) {
        return file;
    }
    const int reason = errno;
    ::close(file);
    errno = reason;
    return INVALID;
}

bool LinuxFiles::size(Handle file, uint64_t& bytes) {
    struct stat status {};
    if (fstat(descriptor(file), &status) != 0) {
        return false;
    }
    bytes = static_cast<uint64_t>(status.st_size);
    return true;
}

bool LinuxFiles::read(Handle file, char* buffer, size_t capacity, size_t& bytesRead) {
    bytesRead = 0;
    while (bytesRead < capacity) {
        // The system reads at most about 2 GiB at a time.
        const ssize_t got = ::read(descriptor(file), buffer + bytesRead, capacity - bytesRead);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            return got == 0;
        }
        bytesRead += static_cast<size_t>(got);
    }
    return true;
}

void LinuxFiles::close(Handle file) {
    ::close(descriptor(file));
}

}  // namespace intake
