#include "tests/workbench/cli/linux/TerminalRun.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>

namespace {

winsize sizeOf(std::size_t columns, std::size_t rows) {
    winsize size{};
    size.ws_col = static_cast<unsigned short>(columns);
    size.ws_row = static_cast<unsigned short>(rows);
    return size;
}

[[noreturn]] void become(std::vector<char*> arguments, const std::filesystem::path& folder) {
    dup2(open((folder / "stdout.txt").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
    if (chdir(folder.c_str()) == 0) execv(arguments[0], arguments.data());
    _exit(127);
}

}  // namespace

TerminalRun::TerminalRun(const std::vector<std::string>& arguments,
                         const std::filesystem::path& folder, std::size_t columns, std::size_t rows)
    : terminal_(columns, rows) {
    std::string program = WORKBENCH;
    std::vector<char*> pointers{program.data()};
    for (const std::string& argument : arguments)
        pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);
    const winsize size = sizeOf(columns, rows);
    child_ = forkpty(&master_, nullptr, nullptr, &size);
    if (child_ == 0) become(std::move(pointers), folder);
}

TerminalRun::~TerminalRun() {
    if (child_ > 0) {
        kill(child_, SIGKILL);
        waitpid(child_, nullptr, 0);
    }
    close(master_);
}

/// False when nothing more will come.
bool TerminalRun::readOnce(int milliseconds) {
    pollfd ready{master_, POLLIN, 0};
    if (poll(&ready, 1, milliseconds) <= 0) {
        terminal_.write(rest_);
        rest_.clear();
        return true;
    }
    std::array<char, 65536> bytes{};
    const ssize_t count = read(master_, bytes.data(), bytes.size());
    if (count <= 0) return false;
    written_.append(bytes.data(), static_cast<std::size_t>(count));
    rest_.append(bytes.data(), static_cast<std::size_t>(count));
    return true;
}

bool TerminalRun::watchUntil(const std::function<bool(const TerminalModel&)>& isAsWanted) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::seconds(20);
    while (!isAsWanted(terminal_)) {
        if (Clock::now() > end || !readOnce(10)) return false;
    }
    return true;
}

void TerminalRun::resize(std::size_t columns, std::size_t rows) {
    const winsize size = sizeOf(columns, rows);
    terminal_.write(rest_);
    rest_.clear();
    terminal_.resize(columns, rows);
    ioctl(master_, TIOCSWINSZ, &size);
}

void TerminalRun::interrupt() {
    const char controlC = 3;
    if (write(master_, &controlC, 1) != 1) kill(child_, SIGINT);
}

void TerminalRun::suspend() {
    kill(child_, SIGTSTP);
    waitpid(child_, nullptr, WUNTRACED);
}

void TerminalRun::resume() {
    kill(child_, SIGCONT);
}

int TerminalRun::finish() {
    while (readOnce(1000)) {
    }
    terminal_.write(rest_);
    int status = 0;
    waitpid(child_, &status, 0);
    child_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
