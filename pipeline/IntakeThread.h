#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "pipeline/IntakeClient.h"
#include "pipeline/ReaderHandler.h"
#include "platform/Platform.h"

namespace intake {

class WorkerState;

/// The worker thread of one plugin instance and its two rings, as the host's thread sees them. All
/// operations are for the host's thread; none waits for a load.
///
/// Ending the worker (Terminate, the destructor) never waits for it either: one that is idle or
/// just starting ends by itself, one that is inside a reader is ended by force where the system can
/// do that, and otherwise left to finish without anybody listening.
class IntakeThread {
public:
    /// Starts the worker, with the reader that `makeReader` makes. Throws std::system_error when
    /// the system has no thread to give.
    IntakeThread(const Platform& platform, const ReaderMaker& makeReader);
    virtual ~IntakeThread();
    IntakeThread(const IntakeThread&) = delete;
    IntakeThread& operator=(const IntakeThread&) = delete;

    /// Queues one command text. The answer goes to `client` if it still lives by then. With ten
    /// requests waiting the newest takes the place of the oldest.
    void PostCommand(const std::shared_ptr<IntakeClient>& client, const std::string& command);

    /// Takes at most one answer out of the result ring and delivers it. Returns whether the ring
    /// could be looked at. The client may call back into this object, or destroy it.
    bool DeliverOneAnswer();

    /// Asks the worker to end and waits up to a second for it.
    void Stop();

    /// Ends the worker at once. Requests that are waiting or still come are never answered.
    void Terminate();

    /// Whether the thread's handle is still open: Stop closes it when the worker has ended.
    bool isOpen() const { return handle_ != nullptr; }

    /// Workers of this process that have not ended yet, abandoned ones included. Any thread.
    static int32_t liveWorkers();

private:
    void letGo() noexcept;

    std::shared_ptr<WorkerState> state_;
    std::unique_ptr<ThreadHandle> handle_;
};

}  // namespace intake
