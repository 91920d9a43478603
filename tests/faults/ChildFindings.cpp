#include "tests/faults/ChildFindings.h"

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <system_error>

#include "tests/faults/call_names.h"

namespace intake {

namespace {

constexpr size_t SIGNAL_STACK = 256 * 1024;

ChildFindings* current = nullptr;

ChildFindings* sharedFindings() {
    void* const memory = mmap(nullptr, sizeof(ChildFindings), PROT_READ | PROT_WRITE,
                              MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        throw std::system_error(errno, std::generic_category(), "mmap");
    }
    return new (memory) ChildFindings;
}

void catchCrashes(void (*handler)(int)) {
    static std::array<char, SIGNAL_STACK> memory;
    stack_t stack{};
    stack.ss_sp = memory.data();
    stack.ss_size = memory.size();
    sigaltstack(&stack, nullptr);
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_ONSTACK;
    for (const int signal : {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL}) {
        sigaction(signal, &action, nullptr);
    }
    callNames();  // loads what it needs
}

}  // namespace

ChildFindings ChildFindings::of(const std::function<void(ChildFindings&)>& body) {
    ChildFindings* const shared = sharedFindings();
    const pid_t child = fork();
    if (child == 0) {
        current = shared;
        catchCrashes(onCrash);
        std::atexit(onExit);
        [[maybe_unused]] const FILE* const quiet = std::freopen("/dev/null", "w", stdout);
        body(*shared);
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    shared->crashed_ = status != 0;
    ChildFindings findings = *shared;
    munmap(shared, sizeof *shared);
    return findings;
}

void ChildFindings::startTry(uint64_t number) {
    try_ = number;
}

void ChildFindings::add(const char* what) {
    const size_t length = std::strlen(text_.data());
    std::snprintf(text_.data() + length, text_.size() - length, "%llu: %s\n",
                  static_cast<unsigned long long>(try_), what);
}

/// The process is lost: whatever helps to find the reason is worth trying.
void ChildFindings::onCrash(int signal) {
    addEnd("crashes in");
    _exit(signal);
}

/// The body ends in another way.
void ChildFindings::onExit() {
    addEnd("the process is ended by");
}

void ChildFindings::addEnd(const char* what) {
    std::array<char, sizeof(CallNames) + 32> text{};
    std::snprintf(text.data(), text.size(), "%s %s", what, callNames().data());
    current->add(text.data());
}

}  // namespace intake
