#include "platform/linux/LinuxFiles.h"

#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/base/RegularFile.h"

namespace intake {

namespace {

int descriptor(Files::Handle file) {
    return static_cast<int>(file);
}

}  // namespace

Files::Handle LinuxFiles::open(const char* path) {
    return openRegularFile(path).release();
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
    const int64_t got = readFully(descriptor(file), 0, buffer, capacity);
    bytesRead = got < 0 ? 0 : static_cast<size_t>(got);
    return got >= 0;
}

void LinuxFiles::close(Handle file) {
    ::close(descriptor(file));
}

}  // namespace intake
