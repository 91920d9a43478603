#include "platform/linux/base/RegularFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace intake {

namespace {

/// What is wrong with a file of this kind; 0 when nothing is.
int faultOf(mode_t mode) {
    return S_ISREG(mode) ? 0 : S_ISDIR(mode) ? EISDIR : ENOTSUP;
}

[[noreturn]] void throwLastError() {
    throw std::system_error(errno, std::system_category());
}

}  // namespace

Descriptor openRegularFile(const char* path) {
    Descriptor file(::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file.isOpen()) {
        return file;
    }
    const int fault = fstat(file.get(), &status) != 0 ? errno : faultOf(status.st_mode);
    if (fault == 0) {
        return file;
    }
    ::close(file.release());
    errno = fault;
    return Descriptor(-1);
}

int64_t readFully(int file, uint64_t offset, char* out, size_t length) {
    size_t filled = 0;
    while (filled < length) {
        // The system reads at most about 2 GiB at a time.
        const ssize_t got =
            ::pread(file, out + filled, length - filled, static_cast<off_t>(offset + filled));
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            return got;
        }
        if (got == 0) {
            break;
        }
        filled += static_cast<size_t>(got);
    }
    return static_cast<int64_t>(filled);
}

RegularFile::RegularFile(const std::string& path) : file_(openRegularFile(path.c_str())) {
    struct stat status {};
    if (!file_.isOpen() || fstat(file_.get(), &status) != 0) {
        throwLastError();
    }
    size_ = static_cast<uint64_t>(status.st_size);
}

size_t RegularFile::read(uint64_t offset, char* out, size_t length) const {
    const int64_t got = readFully(file_.get(), offset, out, length);
    if (got < 0) {
        throwLastError();
    }
    return static_cast<size_t>(got);
}

}  // namespace intake
