// Kept in a folder of the user's that lives as long as the user is logged in.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>

#include "workbench/serve/secret.h"

namespace serve {

namespace {

constexpr std::size_t length = 64;
constexpr mode_t permissions = 07777;

/// An open file or folder, closed with its object.
class Opened {
public:
    explicit Opened(int number) : number_(number) {}
    ~Opened() {
        if (number_ >= 0) close(number_);
    }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    int get() const { return number_; }

    /// Whether it is of that kind, the user's own, and for nobody else.
    bool isPrivate(mode_t kind, mode_t mode) const {
        struct stat status {};
        return number_ >= 0 && fstat(number_, &status) == 0 && (status.st_mode & S_IFMT) == kind &&
               (status.st_mode & permissions) == mode && status.st_uid == geteuid();
    }

private:
    const int number_;
};

/// Of which anybody might have made what is there already.
int openFolder() {
    const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime == nullptr || runtime[0] != '/') return -1;
    const std::string folder = std::string(runtime) + "/intake-workbench";
    mkdir(folder.c_str(), S_IRWXU);
    return open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

bool isWhole(std::string_view secret) {
    return secret.size() == length &&
           secret.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

/// Empty where there is none, or none that can be trusted.
std::string readSecret(int folder, const std::string& name) {
    constexpr int flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const Opened file(openat(folder, name.c_str(), flags));
    if (!file.isPrivate(S_IFREG, S_IRUSR | S_IWUSR)) return "";
    std::array<char, length + 1> text{};
    const ssize_t count = read(file.get(), text.data(), text.size());
    const std::string secret(text.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    return isWhole(secret) ? secret : "";
}

/// In place of what is there. Where it cannot be kept, pages have to be opened anew the next time.
void writeSecret(int folder, const std::string& name, const std::string& secret) {
    unlinkat(folder, name.c_str(), 0);
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    const Opened file(openat(folder, name.c_str(), flags, S_IRUSR | S_IWUSR));
    if (file.get() < 0) return;
    const bool isKept = write(file.get(), secret.data(), length) == ssize_t{length};
    if (!isKept) unlinkat(folder, name.c_str(), 0);
}

}  // namespace

std::string sessionSecret(uint16_t port) {
    if (port == 0) return newSecret();
    const Opened folder(openFolder());
    if (!folder.isPrivate(S_IFDIR, S_IRWXU)) return newSecret();
    const std::string name = "session-" + std::to_string(port);
    std::string secret = readSecret(folder.get(), name);
    if (secret.empty()) {
        secret = newSecret();
        writeSecret(folder.get(), name, secret);
    }
    return secret;
}

}  // namespace serve
