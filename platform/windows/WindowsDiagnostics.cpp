#include "platform/windows/WindowsDiagnostics.h"

#include <windows.h>

#include "platform/windows/base/system_message.h"

namespace intake {

bool WindowsDiagnostics::lastErrorText(std::string& text) {
    const DWORD error = GetLastError();
    const bool found = systemMessage(error, text);
    SetLastError(error);  // it stays until the next error
    return found;
}

void WindowsDiagnostics::debugOutput(const char* text) {
    OutputDebugStringA(text);
}

bool WindowsDiagnostics::hasConsole() {
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    return output != nullptr && output != INVALID_HANDLE_VALUE;
}

/// Fails where standard output is redirected, and then there is nothing to do.
void WindowsDiagnostics::writeConsoleWindow(std::string_view text) {
    DWORD written = 0;
    WriteConsoleA(GetStdHandle(STD_OUTPUT_HANDLE), text.data(), static_cast<DWORD>(text.size()),
                  &written, nullptr);
}

}  // namespace intake
