#include <gtest/gtest.h>
#include <windows.h>

namespace intake {

namespace {

bool isLoaded(const char* library) {
    return GetModuleHandleA(library) != nullptr;
}

}  // namespace

TEST(WindowsThreads, TheLibraryCanBeUnloadedBeforeItsFirstWorkerAndNeverAfterIt) {
    HMODULE library = LoadLibraryA(WORKER_LIBRARY);
    ASSERT_NE(library, nullptr) << GetLastError();
    FreeLibrary(library);
    ASSERT_FALSE(isLoaded(WORKER_LIBRARY));

    library = LoadLibraryA(WORKER_LIBRARY);
    const FARPROC startWorker = GetProcAddress(library, "startWorker");
    ASSERT_NE(startWorker, nullptr) << GetLastError();
    startWorker();
    FreeLibrary(library);
    EXPECT_TRUE(isLoaded(WORKER_LIBRARY));
}

}  // namespace intake
