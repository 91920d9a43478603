#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "pipeline/CircBuffer.h"
#include "pipeline/IntakeCommand.h"
#include "pipeline/ReaderHandler.h"
#include "pipeline/ReaderLogger.h"
#include "platform/Platform.h"
#include "platform/Signal.h"

namespace intake {

/// What a worker thread and its IntakeThread share: rings, logger and reader. It lives until both
/// have let go of it, so that a worker that was abandoned inside a reader never meets freed memory.
class WorkerState {
public:
    WorkerState(const Platform& platform, const ReaderMaker& makeReader);

    /// The body of the worker thread: answers requests, and waits in between, until it is told to
    /// stop or marked as ended.
    void run();

    /// Puts a request into its ring. Host's thread.
    void post(IntakeCommand&& request);

    /// Has the worker end as soon as it can; nothing is published any more. Host's thread.
    void end();

    /// Has the worker end after what it is at. Host's thread.
    void stop();

    /// Parses one command text and runs the reader. Worker thread. What a reader throws becomes the
    /// error text; only want of memory for that is thrown.
    void ProcessCommand(const std::string& command, bool& success, std::string& answer,
                        std::string& error);

    /// Puts an entry into a ring, waiting for its mutex however long that takes. Both threads.
    void put(CircBuffer<IntakeCommand>& ring, std::chrono::milliseconds retryAfter,
             IntakeCommand&& entry);

    /// Leaves what is of no use any more to the worker: freeing a large text takes milliseconds.
    /// Host's thread.
    void discard(IntakeCommand&& delivered);

    /// Whether answers are here that may be large: not taken yet, or not freed. Host's thread.
    bool holdsAnswers();

    Threads& threads;
    Clock& clock;
    CircBuffer<IntakeCommand> requests;
    CircBuffer<IntakeCommand> results;

    std::atomic<int32_t> stopRequested = 0;  // set by stop(), cleared by the worker at its end
    std::atomic<bool> reading = false;       // the worker is inside a reader
    EndMark endMark;                         // set by end()

private:
    bool answerNextRequest();
    void waitForWork(bool hasAnswered);
    void sleepUntilThereIsWork();
    void rest();
    void freeDiscarded();
    bool takeRequest(std::shared_ptr<IntakeClient>& client, std::string& command);
    bool readSource(const RequestRecord& request, std::string& answer, std::string& error);

    Signal work_;            // a request, something to free, or the end
    bool isResting_ = true;  // the reader keeps nothing for the next request
    std::mutex discardedMutex_;
    std::vector<IntakeCommand> discarded_;
    ReaderLogger logger_;
    const std::unique_ptr<ReaderHandler> reader_;
};

}  // namespace intake
