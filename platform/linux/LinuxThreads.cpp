#include "platform/linux/LinuxThreads.h"

#include <dlfcn.h>
#include <pthread.h>
#include <sys/prctl.h>

#include <condition_variable>
#include <csignal>
#include <mutex>
#include <thread>

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

/// What the thread and its handle share.
class EndSignal {
public:
    void set() {
        const std::lock_guard lock(mutex_);
        ended_ = true;
        condition_.notify_all();
    }
    bool waitFor(std::chrono::milliseconds limit) {
        std::unique_lock lock(mutex_);
        return condition_.wait_for(lock, limit, [this] { return ended_; });
    }

private:
    std::mutex mutex_;
    std::condition_variable condition_;
    bool ended_ = false;
};

class DetachedThread final : public ThreadHandle {
public:
    explicit DetachedThread(std::function<void()> body) {
        std::thread thread([body = std::move(body), end = end_]() mutable {
            body();
            body = nullptr;  // what it holds is gone before anybody sees the end
            end->set();
        });
        identifier_ = std::hash<std::thread::id>{}(thread.get_id());
        thread.detach();
    }

    uint64_t identifier() const override { return identifier_; }
    bool waitFor(std::chrono::milliseconds limit) override { return end_->waitFor(limit); }
    void terminate() override {}

private:
    std::shared_ptr<EndSignal> end_ = std::make_shared<EndSignal>();
    uint64_t identifier_ = 0;
};

/// Unloading the library under a worker that is still running would crash the host.
void keepLibraryLoaded() {
    Dl_info library{};
    if (dladdr(reinterpret_cast<void*>(&keepLibraryLoaded), &library) != 0) {
        dlopen(library.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
    }
}

/// Lets the kernel wake the polls of many idle workers together.
void allowLateWakeUps() {
    constexpr unsigned long SLACK_NANOSECONDS = 10'000'000;
    prctl(PR_SET_TIMERSLACK, SLACK_NANOSECONDS, 0, 0, 0);
}

/// A peer that closes its connection must not end the host.
void blockBrokenPipeSignal() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

}  // namespace

std::unique_ptr<Mutex> LinuxThreads::createMutex() {
    return std::make_unique<RecursiveMutex>();
}

std::unique_ptr<ThreadHandle> LinuxThreads::start(std::function<void()> body) {
    static std::once_flag pinned;
    std::call_once(pinned, keepLibraryLoaded);
    return std::make_unique<DetachedThread>(std::move(body));
}

void LinuxThreads::enterWorker() {
    allowLateWakeUps();
    blockBrokenPipeSignal();
}

void LinuxThreads::leaveWorker() {}

}  // namespace intake
