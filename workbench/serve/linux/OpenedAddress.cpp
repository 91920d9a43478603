#include "workbench/serve/OpenedAddress.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <system_error>
#include <thread>

extern char** environ;

namespace serve {

namespace {

constexpr const char* program = "xdg-open";

/// Which nobody else can enter.
std::filesystem::path newFolder() {
    std::string name = std::filesystem::temp_directory_path() / "intake-workbench-XXXXXX";
    if (mkdtemp(name.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), name);
    return name;
}

std::string pageThatLeadsTo(const std::string& address) {
    return "<!doctype html><meta charset=utf-8><title>intake-workbench</title>"
           "<meta http-equiv=refresh content=\"0; url=" +
           address + "\"><p><a href=\"" + address + "\">The page of the workbench</a>\n";
}

/// In a session of its own, for Ctrl-C is not meant for a browser, and with no output.
pid_t start(const std::string& file) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDWR, 0);
    for (const int output : {STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_adddup2(&actions, STDIN_FILENO, output);
    // The browser outlives the server, whose port it must not keep.
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    const std::array<char*, 3> arguments{const_cast<char*>(program),
                                         const_cast<char*>(file.c_str()), nullptr};
    pid_t child = 0;
    const int error =
        posix_spawnp(&child, program, &actions, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::system_error(error, std::generic_category(), program);
    return child;
}

/// Some browsers stay in the foreground until they are closed.
void tellOfFailure(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return;
    std::fprintf(stderr, "%s found no browser. Open the address yourself.\n", program);
}

}  // namespace

OpenedAddress::OpenedAddress(const std::string& address) : folder_(newFolder()) {
    try {
        const std::filesystem::path file = folder_ / "page.html";
        std::ofstream(file) << pageThatLeadsTo(address);
        std::thread(tellOfFailure, start(file)).detach();
    } catch (...) {
        std::filesystem::remove_all(folder_);
        throw;
    }
}

OpenedAddress::~OpenedAddress() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

}  // namespace serve
