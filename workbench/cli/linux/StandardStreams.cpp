#include "workbench/cli/StandardStreams.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace workbench {

namespace {

[[noreturn]] void fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

}  // namespace

StandardStreams::StandardStreams() : result_(dup(STDOUT_FILENO)) {
    if (result_ < 0 || dup2(STDERR_FILENO, STDOUT_FILENO) < 0)
        fail("Could not set standard output aside");
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);  // in step with standard error
}

StandardStreams::~StandardStreams() {
    close(result_);
}

void StandardStreams::writeResult(std::string_view text) const {
    while (!text.empty()) {
        const ssize_t written = write(result_, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) fail("Could not write the result");
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

std::optional<std::size_t> StandardStreams::resultColumns() const {
    constexpr std::size_t usual = 80;  // of a terminal that does not tell
    winsize size{};
    if (ioctl(result_, TIOCGWINSZ, &size) != 0) return std::nullopt;
    return size.ws_col == 0 ? usual : size.ws_col;
}

bool StandardStreams::errorIsTerminal() const {
    return isatty(STDERR_FILENO) == 1;
}

}  // namespace workbench
