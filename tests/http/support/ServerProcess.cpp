#include "tests/http/support/ServerProcess.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "tests/http/support/loopback.h"
#include "tests/support/TempDirectory.h"
#include "tests/support/eventually.h"

namespace intake {

namespace {

std::string contents(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<char*> argumentPointers(const std::string& program,
                                    const std::vector<std::string>& arguments) {
    std::vector<char*> pointers{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) {
        pointers.push_back(const_cast<char*>(argument.c_str()));
    }
    pointers.push_back(nullptr);
    return pointers;
}

[[noreturn]] void become(const std::vector<char*>& arguments, const std::string& input,
                         const std::string& output) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(open(input.c_str(), O_RDONLY), STDIN_FILENO);
    const int out = open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    dup2(out, STDOUT_FILENO);
    dup2(out, STDERR_FILENO);
    execv(arguments[0], arguments.data());
    _exit(127);
}

pid_t start(const std::string& program, const std::vector<std::string>& arguments,
            const std::string& input, const std::string& output) {
    if (access(program.c_str(), X_OK) != 0) {
        throw std::runtime_error(program + " is missing; scripts/setup test installs it");
    }
    const std::vector<char*> pointers = argumentPointers(program, arguments);
    const pid_t process = fork();
    if (process == 0) {
        become(pointers, input, output);
    }
    return process;
}

bool hasEnded(pid_t process) {
    siginfo_t info{};
    return waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOHANG | WNOWAIT) != 0 ||
           info.si_pid != 0;
}

void stop(pid_t process, int signal) {
    kill(process, signal);
    waitpid(process, nullptr, 0);
}

}  // namespace

void runTool(const std::string& program, const std::vector<std::string>& arguments,
             const std::string& input) {
    const TempDirectory directory;
    const std::string output = (directory.path() / "output").string();
    int status = 0;
    waitpid(start(program, arguments, directory.write("input", input), output), &status, 0);
    if (status != 0) {
        throw std::runtime_error(program + " failed:\n" + contents(output));
    }
}

ServerProcess::ServerProcess(const std::string& program, const std::vector<std::string>& arguments,
                             const Ports& ports, const std::filesystem::path& output,
                             int stopSignal)
    : process_(start(program, arguments, "/dev/null", output.string())), stopSignal_(stopSignal) {
    const auto listensOnAll = [&] { return std::ranges::all_of(ports, isListening); };
    eventually([&] { return listensOnAll() || hasEnded(process_); });
    if (hasEnded(process_) || !listensOnAll()) {
        stop(process_, stopSignal_);
        throw std::runtime_error(program + " did not start:\n" + contents(output));
    }
}

ServerProcess::~ServerProcess() {
    stop(process_, stopSignal_);
}

}  // namespace intake
