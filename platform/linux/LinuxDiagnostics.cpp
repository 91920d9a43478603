#include "platform/linux/LinuxDiagnostics.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace intake {

bool LinuxDiagnostics::lastErrorText(std::string& text) {
    if (errno == 0) {
        return false;
    }
    text = std::system_category().message(errno);
    return true;
}

void LinuxDiagnostics::debugOutput(const char* text) {
    std::fputs(text, stderr);
}

bool LinuxDiagnostics::hasConsole() {
    return fcntl(STDOUT_FILENO, F_GETFD) != -1;
}

void LinuxDiagnostics::writeConsoleWindow(std::string_view) {}

}  // namespace intake
