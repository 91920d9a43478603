#include "workbench/cli/StandardStreams.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>

namespace workbench {

namespace {

constexpr int output = 1;
constexpr int error = 2;

[[noreturn]] void fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

HANDLE systemHandle(int file) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(file));
}

}  // namespace

StandardStreams::StandardStreams() : result_(_dup(output)) {
    if (result_ < 0 || _dup2(error, output) < 0) fail("Could not set standard output aside");
    SetStdHandle(STD_OUTPUT_HANDLE, systemHandle(error));  // for those who ask the system
    _setmode(result_, _O_BINARY);
    _setmode(output, _O_BINARY);
    _setmode(error, _O_BINARY);
    std::setvbuf(stdout, nullptr, _IONBF, 0);  // in step with standard error
    std::setvbuf(stderr, nullptr, _IONBF, 0);  // and that with what the plugin prints there
}

StandardStreams::~StandardStreams() {
    _close(result_);
}

void StandardStreams::writeResult(std::string_view text) const {
    constexpr std::size_t most = 1 << 20;  // the C library takes an int
    while (!text.empty()) {
        const int written =
            _write(result_, text.data(), static_cast<unsigned>(std::min(text.size(), most)));
        if (written < 0) fail("Could not write the result");
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

std::optional<std::size_t> StandardStreams::resultColumns() const {
    CONSOLE_SCREEN_BUFFER_INFO screen{};
    if (GetConsoleScreenBufferInfo(systemHandle(result_), &screen) == 0) return std::nullopt;
    return static_cast<std::size_t>(screen.srWindow.Right - screen.srWindow.Left + 1);
}

bool StandardStreams::errorIsTerminal() const {
    return _isatty(error) != 0;
}

}  // namespace workbench
