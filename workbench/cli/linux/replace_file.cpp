#include "workbench/cli/replace_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

namespace workbench {

namespace {

[[noreturn]] void fail() {
    throw std::system_error(errno, std::generic_category());
}

/// A file that goes again unless it is taken over.
class NewFile {
public:
    NewFile(std::filesystem::path file, bool isPrivate)
        : file_(std::move(file)),
          descriptor_(open(file_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                           isPrivate ? 0600 : 0666)) {
        if (descriptor_ < 0) fail();
    }
    ~NewFile() {
        close(descriptor_);
        if (!isTakenOver_) unlink(file_.c_str());
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void takeRightsOf(const std::filesystem::path& other) const {
        struct stat status {};
        if (stat(other.c_str(), &status) != 0) return;  // there is none yet
        if (fchmod(descriptor_, status.st_mode & 07777U) != 0) fail();
    }

    void write(std::string_view text) const {
        while (!text.empty()) {
            const ssize_t count = ::write(descriptor_, text.data(), text.size());
            if (count < 0 && errno != EINTR) fail();
            if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
        }
        if (fsync(descriptor_) != 0) fail();
    }

    void takeOver(const std::filesystem::path& name) {
        if (rename(file_.c_str(), name.c_str()) != 0) fail();
        isTakenOver_ = true;
    }

private:
    const std::filesystem::path file_;
    const int descriptor_;
    bool isTakenOver_ = false;
};

}  // namespace

void replaceFile(const std::filesystem::path& file, std::string_view text, bool isPrivate,
                 const std::function<bool()>& isAllowed) {
    NewFile made(file.parent_path() /
                     ("." + file.filename().string() + "." + std::to_string(getpid()) + ".new"),
                 isPrivate);
    made.takeRightsOf(file);
    made.write(text);
    if (isAllowed()) made.takeOver(file);
}

}  // namespace workbench
