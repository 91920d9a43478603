#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

#include "platform/Mutex.h"

namespace intake {

/// A running thread as its starter sees it. Used by the starter's thread only. Destroying it closes
/// the handle and leaves the thread to itself.
class ThreadHandle {
public:
    virtual ~ThreadHandle() = default;

    virtual uint64_t identifier() const = 0;

    /// Waits for the thread's end. False when it still ran after `limit`.
    virtual bool waitFor(std::chrono::milliseconds limit) = 0;

    /// Ends the thread wherever it is, as far as the system can do that without harm, and never
    /// waits for work in progress. A system that cannot leaves the thread running; its body has to
    /// watch a mark of its own and end by itself.
    virtual void terminate() = 0;
};

/// What the system supplies for worker threads. Process-wide; any thread.
class Threads {
public:
    virtual ~Threads() = default;

    virtual std::unique_ptr<Mutex> createMutex() = 0;

    /// Runs `body` on a new thread; from then on the library stays loaded for good. Throws
    /// std::system_error when the system has none to give.
    virtual std::unique_ptr<ThreadHandle> start(std::function<void()> body) = 0;

    /// Called by a worker thread first and last: sets the thread up for the system's services.
    virtual void enterWorker() = 0;
    virtual void leaveWorker() = 0;
};

}  // namespace intake
