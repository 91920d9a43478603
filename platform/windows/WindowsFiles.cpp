#include "platform/windows/WindowsFiles.h"

#include <windows.h>

namespace intake {

namespace {

HANDLE toSystem(Files::Handle file) {
    return reinterpret_cast<HANDLE>(file);
}

}  // namespace

Files::Handle WindowsFiles::open(const char* path) {
    const HANDLE file = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE || GetFileType(file) == FILE_TYPE_DISK) {
        return reinterpret_cast<Handle>(file);
    }
    CloseHandle(file);  // a pipe or a device, which has no end
    SetLastError(ERROR_NOT_SUPPORTED);
    return INVALID;
}

bool WindowsFiles::size(Handle file, uint64_t& bytes) {
    LARGE_INTEGER size{};
    if (GetFileSizeEx(toSystem(file), &size) == 0) {
        return false;
    }
    bytes = static_cast<uint64_t>(size.QuadPart);
    return true;
}

bool WindowsFiles::read(Handle file, char* buffer, size_t capacity, size_t& bytesRead) {
    if (capacity > MAXDWORD) {
        SetLastError(ERROR_FILE_TOO_LARGE);
        return false;
    }
    DWORD got = 0;
    if (ReadFile(toSystem(file), buffer, static_cast<DWORD>(capacity), &got, nullptr) == 0) {
        return false;
    }
    bytesRead = got;
    return true;
}

void WindowsFiles::close(Handle file) {
    CloseHandle(toSystem(file));
}

}  // namespace intake
