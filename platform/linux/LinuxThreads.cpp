#include "platform/linux/LinuxThreads.h"

#include <dlfcn.h>
#include <pthread.h>
#include <sys/prctl.h>

#include <csignal>
#include <mutex>

#include "platform/linux/base/detached_thread.h"

namespace intake {

namespace {

class RecursiveMutex final : public Mutex {
public:
    bool lock() override {
        mutex_.lock();
        return true;
    }
    bool tryLock() override { return mutex_.try_lock(); }
    void unlock() override { mutex_.unlock(); }

private:
    std::recursive_mutex mutex_;
};

class WorkerHandle final : public ThreadHandle {
public:
    explicit WorkerHandle(DetachedThread thread) : thread_(std::move(thread)) {}

    uint64_t identifier() const override { return thread_.identifier; }
    bool waitFor(std::chrono::milliseconds limit) override { return thread_.end->waitFor(limit); }
    void terminate() override {}

private:
    DetachedThread thread_;
};

/// Unloading the library under a worker that is still running would crash the host.
void keepLibraryLoaded() {
    Dl_info library{};
    if (dladdr(reinterpret_cast<void*>(&keepLibraryLoaded), &library) != 0) {
        dlopen(library.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
    }
}

/// Lets the kernel wake the pauses of many workers together.
void allowLateWakeUps() {
    constexpr unsigned long SLACK_NANOSECONDS = 10'000'000;
    prctl(PR_SET_TIMERSLACK, SLACK_NANOSECONDS, 0, 0, 0);
}

/// Signals are the host's: its handlers do not expect to run on a worker, and a peer that closes
/// its connection must not end the host. Those that tell of a fault come to the thread that commits
/// it. The former mask.
sigset_t blockSignals() {
    sigset_t signals, former;
    sigfillset(&signals);
    for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT}) {
        sigdelset(&signals, fault);
    }
    pthread_sigmask(SIG_BLOCK, &signals, &former);
    return former;
}

/// Blocks them in the calling thread for as long as it lives.
class SignalsBlocked {
public:
    SignalsBlocked() : former_(blockSignals()) {}
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &former_, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

private:
    const sigset_t former_;
};

}  // namespace

std::unique_ptr<Mutex> LinuxThreads::createMutex() {
    return std::make_unique<RecursiveMutex>();
}

std::unique_ptr<ThreadHandle> LinuxThreads::start(std::function<void()> body) {
    static std::once_flag pinned;
    std::call_once(pinned, keepLibraryLoaded);
    const SignalsBlocked forTheNewThread;  // which has the mask of its maker from the start
    return std::make_unique<WorkerHandle>(startDetached(std::move(body)));
}

void LinuxThreads::enterWorker() {
    allowLateWakeUps();
    blockSignals();
}

void LinuxThreads::leaveWorker() {}

}  // namespace intake
