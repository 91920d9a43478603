#include "platform/linux/LinuxTextFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/linux/base/Descriptor.h"

namespace intake {

namespace {

constexpr mode_t OWNER_ONLY = S_IRUSR | S_IWUSR;

class LinuxTextFile final : public TextFile {
public:
    explicit LinuxTextFile(Descriptor file) : file_(std::move(file)) {}

    void append(std::string_view text) override {
        while (!text.empty()) {
            const ssize_t written = ::write(file_.get(), text.data(), text.size());
            if (written < 0 && errno != EINTR) {
                return;
            }
            text.remove_prefix(written < 0 ? 0 : static_cast<size_t>(written));
        }
    }

private:
    Descriptor file_;
};

/// A file of another name, or of somebody who made it before, must not be written to.
bool isOursAlone(int file) {
    struct stat status {};
    return fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink == 1 &&
           status.st_uid == geteuid();
}

}  // namespace

std::unique_ptr<TextFile> LinuxTextFiles::create(const std::string& path) {
    // Opening a pipe that nobody reads must not hold the caller.
    constexpr int FLAGS = O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    Descriptor file(::open(path.c_str(), FLAGS, OWNER_ONLY));
    if (!file.isOpen() || !isOursAlone(file.get()) || fchmod(file.get(), OWNER_ONLY) != 0 ||
        ftruncate(file.get(), 0) != 0) {
        return nullptr;
    }
    return std::make_unique<LinuxTextFile>(std::move(file));
}

}  // namespace intake
