#pragma once

#include "platform/Threads.h"

namespace intake {

/// Threads of the standard library. A thread is never ended by force: other threads may need a lock
/// that it holds. It is abandoned instead.
class LinuxThreads final : public Threads {
public:
    std::unique_ptr<Mutex> createMutex() override;
    std::unique_ptr<ThreadHandle> start(std::function<void()> body) override;
    void enterWorker() override;
    void leaveWorker() override;
};

}  // namespace intake
