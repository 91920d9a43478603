#include "workbench/cli/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <optional>
#include <system_error>

extern char** environ;

namespace workbench {

namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void fail(int error, const char* what) {
    throw std::system_error(error, std::generic_category(), what);
}

/// Both ends of a pipe, which no child inherits by itself.
struct Pipe {
    Pipe() {
        if (pipe2(ends.data(), O_CLOEXEC) != 0) fail(errno, "Could not make a pipe");
    }
    ~Pipe() {
        closeEnd(0);
        closeEnd(1);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    void closeEnd(std::size_t end) {
        if (ends[end] >= 0) close(ends[end]);
        ends[end] = -1;
    }

    std::array<int, 2> ends{-1, -1};  // to read from, to write to
};

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (const std::string& each : texts)
        pointers.push_back(const_cast<char*>(each.c_str()));
    return pointers;
}

bool isNamedIn(const std::vector<std::string>& variables, std::string_view variable) {
    const std::string_view name = variable.substr(0, variable.find('=') + 1);
    return std::any_of(variables.begin(), variables.end(),
                       [name](const std::string& each) { return each.starts_with(name); });
}

/// Those of this process, but for those in whose place there are others.
std::vector<char*> variables(const std::vector<std::string>& others) {
    std::vector<char*> pointers = pointersTo(others);
    for (char** own = environ; *own != nullptr; ++own) {
        if (!isNamedIn(others, *own)) pointers.push_back(*own);
    }
    pointers.push_back(nullptr);
    return pointers;
}

pid_t start(const std::vector<std::string>& command, const std::vector<std::string>& environment,
            const Pipe& in, const Pipe& out, const Pipe& err) {
    std::vector<char*> arguments = pointersTo(command);
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in.ends[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out.ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err.ends[1], STDERR_FILENO);
    // Sockets of libraries among them, on which the child would keep a port from being used again.
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    pid_t child = 0;
    const int error = posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(),
                                  variables(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) fail(error, "Could not start a process");
    return child;
}

/// Gives the child its input and takes what it writes, until it closes its output or the time is
/// over.
class Talk {
public:
    Talk(Pipe& in, Pipe& out, Pipe& err, std::string_view input, Clock::time_point end,
         const std::stop_token& stop)
        : in_(in), out_(out), err_(err), input_(input), end_(end), stop_(stop) {
        for (const int pipe : {in.ends[1], out.ends[0], err.ends[0]})
            fcntl(pipe, F_SETFL, O_NONBLOCK);
    }

    /// False when the time was over, or a stop was requested.
    bool run(ChildAnswer& answer) {
        while (out_.ends[0] >= 0) {
            const auto left =
                std::chrono::duration_cast<std::chrono::milliseconds>(end_ - Clock::now()).count();
            std::array<pollfd, 3> ready{
                {{out_.ends[0], POLLIN, 0}, {err_.ends[0], POLLIN, 0}, {in_.ends[1], POLLOUT, 0}}};
            if (left <= 0 || stop_.stop_requested()) return false;
            if (poll(ready.data(), ready.size(), static_cast<int>(std::min(left, longestWait))) < 0)
                continue;
            if (ready[2].revents != 0) give();
            if (ready[1].revents != 0) take(err_, answer.err);
            if (ready[0].revents != 0) take(out_, answer.out);
            if (answer.out.size() + answer.err.size() > mostOutput) return false;
        }
        return true;
    }

    /// What the child wrote to standard error last; it has ended.
    void takeRest(std::string& errors) {
        for (std::size_t before = errors.size() + 1; before != errors.size();) {
            before = errors.size();
            take(err_, errors);
        }
    }

private:
    static constexpr std::chrono::milliseconds::rep longestWait = 50;  // for a stop to be noticed
    static constexpr std::size_t mostOutput = 256U << 20;

    void give() {
        const ssize_t written = write(in_.ends[1], input_.data(), input_.size());
        if (written > 0) input_.remove_prefix(static_cast<std::size_t>(written));
        const bool isBroken = written < 0 && errno != EAGAIN && errno != EINTR;
        if (input_.empty() || isBroken) in_.closeEnd(1);
    }

    static void take(Pipe& from, std::string& text) {
        std::array<char, 65536> bytes;
        const ssize_t count = read(from.ends[0], bytes.data(), bytes.size());
        if (count > 0) text.append(bytes.data(), static_cast<std::size_t>(count));
        const bool isBroken = count < 0 && errno != EAGAIN && errno != EINTR;
        if (count == 0 || isBroken) from.closeEnd(0);
    }

    Pipe& in_;
    Pipe& out_;
    Pipe& err_;
    std::string_view input_;
    Clock::time_point end_;
    const std::stop_token& stop_;
};

int statusOf(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

ChildAnswer askChild(const std::vector<std::string>& command, std::string_view input,
                     double timeoutSeconds, const std::stop_token& stop,
                     const std::vector<std::string>& environment) {
    std::signal(SIGPIPE, SIG_IGN);  // of a child that does not read its input
    Pipe in;
    Pipe out;
    Pipe err;
    const pid_t child = start(command, environment, in, out, err);
    in.closeEnd(0);
    out.closeEnd(1);
    err.closeEnd(1);
    const auto patience = std::chrono::duration<double>(timeoutSeconds);
    const auto end = Clock::now() + std::chrono::duration_cast<Clock::duration>(patience);
    ChildAnswer answer;
    Talk talk(in, out, err, input, end, stop);
    const bool isAnswered = talk.run(answer);
    if (!isAnswered) kill(child, SIGKILL);
    answer.status = statusOf(child);
    talk.takeRest(answer.err);
    return answer;
}

}  // namespace workbench
