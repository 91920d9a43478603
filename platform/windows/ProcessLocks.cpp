#include "platform/windows/ProcessLocks.h"

#include <algorithm>

namespace intake {

namespace {

using LockLoader = LONG(WINAPI*)(ULONG flags, ULONG* disposition, ULONG_PTR* cookie);
using UnlockLoader = LONG(WINAPI*)(ULONG flags, ULONG_PTR cookie);

/// Functions of the system that its headers leave out; null where it has none.
template <class Function>
Function loaderFunction(const char* name) {
    const FARPROC found = GetProcAddress(GetModuleHandleA("ntdll.dll"), name);
    return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

}  // namespace

ProcessLocks::ProcessLocks() {
    static const auto lockLoader = loaderFunction<LockLoader>("LdrLockLoaderLock");
    if (lockLoader != nullptr) {
        lockLoader(0, nullptr, &loaderCookie_);
    }
    // The loader allocates while it holds its lock, so the heaps come second.
    const DWORD heapCount = GetProcessHeaps(MAX_HEAPS, heaps_.data());
    heapCount_ = heapCount <= MAX_HEAPS ? heapCount : 0;  // if there are more, none is listed
    std::for_each_n(heaps_.begin(), heapCount_, HeapLock);
}

ProcessLocks::~ProcessLocks() {
    std::for_each_n(heaps_.begin(), heapCount_, HeapUnlock);
    static const auto unlockLoader = loaderFunction<UnlockLoader>("LdrUnlockLoaderLock");
    if (unlockLoader != nullptr && loaderCookie_ != 0) {
        unlockLoader(0, loaderCookie_);
    }
}

}  // namespace intake
