#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <memory>

#include "platform/Threads.h"

namespace intake {

/// A thread that can be ended by force, though never before its body has begun: a thread that is
/// ended while it starts takes the loader's lock with it, and the whole process hangs.
class WindowsThread final : public ThreadHandle {
public:
    /// Throws std::system_error when the system has none to give.
    explicit WindowsThread(std::function<void()> body);
    ~WindowsThread() override;
    WindowsThread(const WindowsThread&) = delete;
    WindowsThread& operator=(const WindowsThread&) = delete;

    uint64_t identifier() const override { return identifier_; }
    bool waitFor(std::chrono::milliseconds limit) override;

    /// What the body holds is released here, once the thread is gone.
    void terminate() override;

private:
    enum class Phase { STARTING, RUNNING, LEAVING, CANCELLED, TERMINATED };

    /// What the thread and its handle share. Whoever moves the phase out of RUNNING releases the
    /// body.
    struct Shared {
        std::function<void()> body;
        std::atomic<Phase> phase = Phase::STARTING;

        bool move(Phase from, Phase to) { return phase.compare_exchange_strong(from, to); }
    };

    static DWORD WINAPI run(void* argument);

    std::shared_ptr<Shared> shared_;
    HANDLE handle_ = nullptr;
    DWORD identifier_ = 0;
};

}  // namespace intake
