#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>

#include <csignal>
#include <thread>

#include "platform/Platform.h"

namespace intake {

namespace {

bool isLoaded(const char* library) {
    void* const handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
    if (handle != nullptr) {
        dlclose(handle);
    }
    return handle != nullptr;
}

}  // namespace

TEST(LinuxThreads, AWorkerLetsItsWakeUpsBeTenMillisecondsLate) {
    int slackNanoseconds = 0;
    std::thread([&] {
        systemPlatform().threads.enterWorker();
        slackNanoseconds = prctl(PR_GET_TIMERSLACK, 0, 0, 0, 0);
    }).join();
    EXPECT_EQ(slackNanoseconds, 10'000'000);
}

TEST(LinuxThreads, AWorkerLeavesAllSignalsToTheHostButThoseOfItsOwnFaults) {
    sigset_t before, blocked, after;
    pthread_sigmask(SIG_BLOCK, nullptr, &before);
    const auto worker = systemPlatform().threads.start(
        [&blocked] { pthread_sigmask(SIG_BLOCK, nullptr, &blocked); });
    ASSERT_TRUE(worker->waitFor(std::chrono::minutes(1)));
    for (const int signal : {SIGPIPE, SIGTERM, SIGINT, SIGUSR1, SIGALRM, SIGCHLD, SIGPROF}) {
        EXPECT_EQ(sigismember(&blocked, signal), 1) << signal;
    }
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT}) {
        EXPECT_EQ(sigismember(&blocked, signal), 0) << signal;
    }
    pthread_sigmask(SIG_BLOCK, nullptr, &after);
    EXPECT_EQ(sigismember(&before, SIGTERM), sigismember(&after, SIGTERM));
}

TEST(LinuxThreads, TheLibraryCanBeUnloadedBeforeItsFirstWorkerAndNeverAfterIt) {
    void* library = dlopen(WORKER_LIBRARY, RTLD_NOW);
    ASSERT_NE(library, nullptr) << dlerror();
    dlclose(library);
    ASSERT_FALSE(isLoaded(WORKER_LIBRARY));

    library = dlopen(WORKER_LIBRARY, RTLD_NOW);
    const auto startWorker = reinterpret_cast<void (*)()>(dlsym(library, "startWorker"));
    ASSERT_NE(startWorker, nullptr) << dlerror();
    startWorker();
    dlclose(library);
    EXPECT_TRUE(isLoaded(WORKER_LIBRARY));
}

}  // namespace intake
