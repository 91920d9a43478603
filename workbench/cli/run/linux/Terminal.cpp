#include "workbench/cli/run/linux/Terminal.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <system_error>
#include <utility>

namespace workbench {

namespace {

constexpr std::string_view hideCursor = "\x1b[?25l";
constexpr std::string_view showCursor = "\x1b[?25h";

std::atomic<bool> suspended = false;

void onSuspend(int) {
    suspended = true;
}

int checked(int descriptor) {
    if (descriptor < 0)
        throw std::system_error(errno, std::generic_category(), "Could not set up the display");
    return descriptor;
}

int setAside(int descriptor) {
    return checked(fcntl(descriptor, F_DUPFD_CLOEXEC, 0));
}

/// A file and not a pipe: who prints much would wait for a reader, and be the reader itself.
int makeMemoryFile() {
    const int file = checked(memfd_create("printed", MFD_CLOEXEC));
    fcntl(file, F_SETFL, O_APPEND);
    return file;
}

}  // namespace

Terminal::Terminal()
    : terminal_(setAside(STDERR_FILENO)),
      output_(setAside(STDOUT_FILENO)),
      printed_(makeMemoryFile()) {
    std::fflush(nullptr);
    dup2(printed_, STDOUT_FILENO);
    dup2(printed_, STDERR_FILENO);
    seize();
    std::signal(SIGTSTP, onSuspend);
}

Terminal::~Terminal() {
    std::fflush(nullptr);
    dup2(output_, STDOUT_FILENO);
    dup2(terminal_, STDERR_FILENO);
    write(takePrinted() + begun_);
    giveBack();
    std::signal(SIGTSTP, SIG_DFL);
    for (const int descriptor : {terminal_, output_, printed_})
        close(descriptor);
}

void Terminal::seize() {
    hideTyping();
    write(hideCursor);
}

void Terminal::giveBack() {
    if (typing_) tcsetattr(terminal_, TCSANOW, &*typing_);
    write(showCursor);
}

bool Terminal::suspendWhereAsked() {
    if (!suspended.exchange(false)) return false;
    giveBack();
    raise(SIGSTOP);
    seize();
    return true;
}

// A process in the background would be stopped for that.
void Terminal::hideTyping() {
    termios settings{};
    if (tcgetpgrp(terminal_) != getpgrp() || tcgetattr(terminal_, &settings) != 0) return;
    typing_ = settings;
    settings.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    tcsetattr(terminal_, TCSANOW, &settings);
}

Terminal::Size Terminal::size() const {
    winsize found{};
    if (ioctl(terminal_, TIOCGWINSZ, &found) != 0) return {};
    return {found.ws_col, found.ws_row};
}

void Terminal::write(std::string_view text) const {
    while (!text.empty()) {
        const ssize_t written = ::write(terminal_, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return;  // nobody is left to see it
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

std::string Terminal::takePrinted() {
    std::fflush(stdout);
    std::string text = std::exchange(begun_, "");
    std::array<char, 65536> block{};
    const off_t former = taken_;
    for (ssize_t count = 0; (count = pread(printed_, block.data(), block.size(), taken_)) > 0;
         taken_ += count)
        text.append(block.data(), static_cast<std::size_t>(count));
    // What was read is given back; the file only seems to grow.
    if (taken_ > former)
        fallocate(printed_, FALLOC_FL_PUNCH_HOLE | FALLOC_FL_KEEP_SIZE, former, taken_ - former);
    const auto end = text.rfind('\n') + 1;
    begun_ = text.substr(end);
    text.resize(end);
    return text;
}

}  // namespace workbench
