#include "platform/windows/base/system_message.h"

#include <windows.h>
#include <system_error>

namespace intake {

void throwLastError(const char* call) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), call);
}

namespace {

bool message(DWORD where, HMODULE module, uint32_t error, std::string& text) {
    text.clear();
    char* buffer = nullptr;
    const DWORD length = FormatMessageA(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_IGNORE_INSERTS | where, module, error,
        MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT), reinterpret_cast<char*>(&buffer), 0, nullptr);
    if (length != 0) {
        text.assign(buffer, length);
    }
    LocalFree(buffer);
    return length != 0;
}

}  // namespace

bool systemMessage(uint32_t error, std::string& text) {
    return message(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, error, text);
}

bool moduleMessage(const char* module, uint32_t error, std::string& text) {
    return message(FORMAT_MESSAGE_FROM_HMODULE, GetModuleHandleA(module), error, text);
}

}  // namespace intake
