#include "workbench/cli/MutedOutput.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace workbench {

namespace {

int setAside(int descriptor) {
    const int copy = fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
    if (copy < 0) throw std::system_error(errno, std::generic_category(), "Could not mute");
    return copy;
}

void restore(int copy, int descriptor) {
    dup2(copy, descriptor);
    close(copy);
}

}  // namespace

MutedOutput::MutedOutput() : output_(setAside(STDOUT_FILENO)), error_(setAside(STDERR_FILENO)) {
    std::fflush(nullptr);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0) return;
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    close(nowhere);
}

void MutedOutput::tell(std::string_view text) const {
    dprintf(error_, "%.*s", static_cast<int>(text.size()), text.data());
}

MutedOutput::~MutedOutput() {
    std::fflush(nullptr);
    if (stays_) return;
    restore(output_, STDOUT_FILENO);
    restore(error_, STDERR_FILENO);
}

}  // namespace workbench
