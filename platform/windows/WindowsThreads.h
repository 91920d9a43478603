#pragma once

#include "platform/Threads.h"

namespace intake {

/// Threads of the kernel, with COM initialised for the whole life of a worker.
class WindowsThreads final : public Threads {
public:
    std::unique_ptr<Mutex> createMutex() override;
    std::unique_ptr<ThreadHandle> start(std::function<void()> body) override;
    void enterWorker() override;
    void leaveWorker() override;
};

}  // namespace intake
