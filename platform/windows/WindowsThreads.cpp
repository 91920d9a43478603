#include "platform/windows/WindowsThreads.h"

#include "platform/windows/WindowsMutex.h"
#include "platform/windows/WindowsThread.h"
#include "platform/windows/com/com.h"

namespace intake {

namespace {

/// Unloading the library under a worker that is still running would crash the host.
bool keepLibraryLoaded() {
    HMODULE library = nullptr;
    return GetModuleHandleExA(
               GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
               reinterpret_cast<const char*>(&keepLibraryLoaded), &library) != 0;
}

}  // namespace

std::unique_ptr<Mutex> WindowsThreads::createMutex() {
    return std::make_unique<WindowsMutex>();
}

std::unique_ptr<ThreadHandle> WindowsThreads::start(std::function<void()> body) {
    [[maybe_unused]] static const bool pinned = keepLibraryLoaded();
    // Under Wine, two workers block each other for good when they are the first to need windows:
    // one for COM, the other while it loads ADO.
    [[maybe_unused]] static const HWND desktop = GetDesktopWindow();
    return std::make_unique<WindowsThread>(std::move(body));
}

void WindowsThreads::enterWorker() {
    CoInitialize(nullptr);
}

void WindowsThreads::leaveWorker() {
    CoUninitialize();
}

}  // namespace intake
