#pragma once

#include <windows.h>

#include <array>

namespace intake {

/// Holds the loader's lock and those of all heaps, so that no other thread does. A thread that was
/// ended by force while it held one would block whoever allocates memory or starts a thread next,
/// the host first of all. While it lives, its own thread must allocate nothing.
class ProcessLocks {
public:
    ProcessLocks();
    ~ProcessLocks();
    ProcessLocks(const ProcessLocks&) = delete;
    ProcessLocks& operator=(const ProcessLocks&) = delete;

private:
    static constexpr DWORD MAX_HEAPS = 256;

    ULONG_PTR loaderCookie_ = 0;
    std::array<HANDLE, MAX_HEAPS> heaps_{};
    DWORD heapCount_ = 0;
};

}  // namespace intake
