#include "platform/windows/WindowsMutex.h"

#include "platform/windows/base/system_message.h"

namespace intake {

WindowsMutex::WindowsMutex() : handle_(CreateMutexA(nullptr, FALSE, nullptr)) {
    if (handle_ == nullptr) {
        throwLastError("CreateMutexA");
    }
}

WindowsMutex::~WindowsMutex() {
    CloseHandle(handle_);
}

bool WindowsMutex::lock() {
    return take(INFINITE);
}

bool WindowsMutex::tryLock() {
    return take(0);
}

void WindowsMutex::unlock() {
    ReleaseMutex(handle_);
}

bool WindowsMutex::take(DWORD limit) {
    const DWORD result = WaitForSingleObject(handle_, limit);
    return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

}  // namespace intake
