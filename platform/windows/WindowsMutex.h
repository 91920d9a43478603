#pragma once

#include <windows.h>

#include "platform/Mutex.h"

namespace intake {

/// An unnamed mutex of the kernel, not owned at first. When the thread that holds it is ended by
/// force, the next one gets it.
class WindowsMutex final : public Mutex {
public:
    /// Throws std::system_error when the system has none to give.
    WindowsMutex();
    ~WindowsMutex() override;
    WindowsMutex(const WindowsMutex&) = delete;
    WindowsMutex& operator=(const WindowsMutex&) = delete;

    bool lock() override;
    bool tryLock() override;
    void unlock() override;

private:
    bool take(DWORD limit);

    HANDLE handle_;
};

}  // namespace intake
