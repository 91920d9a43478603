#include "pipeline/WorkerState.h"

#include <mutex>
#include <new>
#include <sstream>

#include "pipeline/command_text.h"
#include "pipeline/error_reports.h"

namespace intake {

namespace {

constexpr std::chrono::milliseconds BETWEEN_REQUESTS{20};
constexpr std::chrono::seconds UNTIL_REST{20};
constexpr std::chrono::milliseconds POST_RETRY{2};
constexpr std::chrono::milliseconds ANSWER_RETRY{5};

/// The data store's texts end at a zero character, so one inside a value would cut the script.
void removeZeroCharacters(std::string& script) {
    if (script.find('\0') != std::string::npos) {
        std::erase(script, '\0');
    }
}

const std::string& sourceOf(const RequestRecord& request) {
    return request.mode == "SQL" ? request.query : request.filename;
}

}  // namespace

WorkerState::WorkerState(const Platform& platform, const ReaderMaker& makeReader)
    : threads(platform.threads),
      clock(platform.clock),
      requests(platform.threads.createMutex()),
      results(platform.threads.createMutex()),
      logger_(platform.clock, platform.textFiles),
      reader_(makeReader(logger_, endMark)) {}

void WorkerState::run() {
    threads.enterWorker();
    while (stopRequested == 0 && !endMark.isSet()) {
        const bool hasAnswered = answerNextRequest();
        freeDiscarded();
        waitForWork(hasAnswered);
    }
    rest();
    threads.leaveWorker();
    stopRequested = 0;
}

void WorkerState::post(IntakeCommand&& request) {
    put(requests, POST_RETRY, std::move(request));
    work_.raise();
}

void WorkerState::end() {
    endMark.set();
    work_.raise();
}

void WorkerState::stop() {
    stopRequested = 1;
    work_.raise();
}

/// Between two requests there is always a pause, and while the host holds the ring; else the worker
/// costs nothing until there is something to do.
void WorkerState::waitForWork(bool hasAnswered) {
    if (hasAnswered || requests.count() != 0) {
        clock.sleep(BETWEEN_REQUESTS);
    } else {
        sleepUntilThereIsWork();
    }
}

void WorkerState::sleepUntilThereIsWork() {
    if (isResting_) {
        clock.sleepUntil(work_);
    } else if (!clock.sleepUntil(work_, UNTIL_REST)) {
        rest();
    }
}

void WorkerState::rest() {
    reader_->rest();
    isResting_ = true;
}

/// Whether there was one.
bool WorkerState::answerNextRequest() {
    std::shared_ptr<IntakeClient> client;
    IntakeCommand result;
    try {
        std::string command;
        if (takeRequest(client, command)) {
            reading = true;
            isResting_ = false;
            if (!endMark.isSet()) {  // then a worker that does not read is to end by itself
                ProcessCommand(command, result.success, result.text, result.error);
            }
        }
    } catch (const std::exception&) {
        // There is no memory even for the reason. That the load failed must be told all the same,
        // in a text that is short enough to need none.
        result.success = false;
        result.text.clear();
        result.error = "Out of memory.\n";
    }
    reading = false;
    if (client != nullptr && !endMark.isSet()) {
        result.client = client;
        put(results, ANSWER_RETRY, std::move(result));
    }
    return client != nullptr;
}

void WorkerState::discard(IntakeCommand&& delivered) {
    {
        const std::lock_guard lock(discardedMutex_);
        try {
            discarded_.push_back(std::move(delivered));
        } catch (const std::bad_alloc&) {
            const IntakeCommand freedHere = std::move(delivered);
        }
    }
    work_.raise();
}

bool WorkerState::holdsAnswers() {
    const std::lock_guard lock(discardedMutex_);
    return results.count() != 0 || !discarded_.empty();
}

void WorkerState::freeDiscarded() {
    std::vector<IntakeCommand> discarded;
    const std::lock_guard lock(discardedMutex_);
    discarded_.swap(discarded);
}

bool WorkerState::takeRequest(std::shared_ptr<IntakeClient>& client, std::string& command) {
    if (requests.count() == 0 || !requests.mutex().tryLock()) {
        return false;
    }
    const std::lock_guard held(requests.mutex(), std::adopt_lock);
    const IntakeCommand& request = requests.take();
    client = request.client.lock();
    if (client != nullptr) {
        command = request.text;
    }
    return client != nullptr;
}

void WorkerState::put(CircBuffer<IntakeCommand>& ring, std::chrono::milliseconds retryAfter,
                      IntakeCommand&& entry) {
    while (!ring.mutex().lock()) {
        clock.sleep(retryAfter);
    }
    const std::lock_guard held(ring.mutex(), std::adopt_lock);
    ring.reserve() = std::move(entry);
}

void WorkerState::ProcessCommand(const std::string& command, bool& success, std::string& answer,
                                 std::string& error) {
    RequestRecord request;
    std::istringstream in(command);
    in.imbue(std::locale::classic());
    ParseCommand(request, in);
    logger_.setLevel(request.logLevel);
    logger_.Write(LOG_INFO, {"Command: ", command, "\n"});

    success = readSource(request, answer, error);
    if (success) {
        removeZeroCharacters(answer);
    } else {
        answer = std::string();  // nor the room that it had
    }
    logger_.Write(LOG_DEBUG, {success ? "Answer: " : "Error: ", success ? answer : error, "\n"});
}

bool WorkerState::readSource(const RequestRecord& request, std::string& answer,
                             std::string& error) {
    try {
        return reader_->Read(request, answer, error);
    } catch (const PlatformError& failure) {
        error += comErrorReport(failure);
    } catch (const std::bad_alloc&) {
        error += "Not enough memory to load " + sourceOf(request) + ".\n";
    } catch (const std::exception& failure) {
        error += failure.what();
    } catch (...) {
        error += "An unknown failure ended the load of " + sourceOf(request) + ".\n";
    }
    return false;
}

}  // namespace intake
