#include "pipeline/IntakeThread.h"

#include <atomic>
#include <exception>
#include <mutex>

#include "pipeline/WorkerState.h"

namespace intake {

namespace {

constexpr std::chrono::milliseconds STOP_LIMIT{1000};
constexpr size_t LARGE = 64 * 1024;  // bytes of an answer

std::atomic<int32_t> liveWorkerCount = 0;

/// Counts a worker from before its thread starts until nothing of it is left.
class LiveWorker {
public:
    explicit LiveWorker(std::shared_ptr<WorkerState> state) : state_(std::move(state)) {
        ++liveWorkerCount;
    }
    ~LiveWorker() {
        state_.reset();
        --liveWorkerCount;
    }
    LiveWorker(const LiveWorker&) = delete;
    LiveWorker& operator=(const LiveWorker&) = delete;

    void run() { state_->run(); }

private:
    std::shared_ptr<WorkerState> state_;
};

/// An answer that came after the ring was full will be taken once more, from the same place.
IntakeCommand takeAnswer(CircBuffer<IntakeCommand>& results) {
    const bool overflowed = results.count() > CircBuffer<IntakeCommand>::CAPACITY;
    IntakeCommand& answer = results.take();
    return overflowed ? answer : std::move(answer);
}

/// An answer on the host's side. When it is large its worker frees it, however its delivery ends;
/// waking the worker for a small one would take longer than to free it.
class TakenAnswer {
public:
    TakenAnswer(WorkerState& state, IntakeCommand&& answer)
        : state_(state), answer_(std::move(answer)) {}
    ~TakenAnswer() {
        if (answer_.text.capacity() + answer_.error.capacity() >= LARGE) {
            state_.discard(std::move(answer_));
        }
    }
    TakenAnswer(const TakenAnswer&) = delete;
    TakenAnswer& operator=(const TakenAnswer&) = delete;

    const IntakeCommand& get() const { return answer_; }

private:
    WorkerState& state_;
    IntakeCommand answer_;
};

}  // namespace

IntakeThread::IntakeThread(const Platform& platform, const ReaderMaker& makeReader)
    : state_(std::make_shared<WorkerState>(platform, makeReader)) {
    try {
        handle_ = platform.threads.start(
            [worker = std::make_shared<LiveWorker>(state_)] { worker->run(); });
    } catch (...) {
        state_->end();  // the thread may run, and there may be no memory for its handle
        throw;
    }
}

IntakeThread::~IntakeThread() {
    Terminate();
    letGo();
}

/// A worker that has ended can no longer free the answers that nobody took.
void IntakeThread::letGo() noexcept {
    if (state_.use_count() > 1 || !state_->holdsAnswers()) {
        return;
    }
    Threads& threads = state_->threads;
    try {
        threads.start([state = std::move(state_)] {});
    } catch (const std::exception&) {
        // There is no thread for it: they are freed by now.
    }
}

void IntakeThread::PostCommand(const std::shared_ptr<IntakeClient>& client,
                               const std::string& command) {
    // Made beforehand: when there is no memory for it, the ring stays as it is.
    state_->post(IntakeCommand{client, command});
}

bool IntakeThread::DeliverOneAnswer() {
    const std::shared_ptr<WorkerState> state = state_;  // the client may destroy this object
    CircBuffer<IntakeCommand>& results = state->results;
    if (results.count() == 0 || !results.mutex().tryLock()) {
        return false;
    }
    const std::lock_guard held(results.mutex(), std::adopt_lock);
    const TakenAnswer taken(*state, takeAnswer(results));
    const IntakeCommand& answer = taken.get();
    if (const std::shared_ptr<IntakeClient> client = answer.client.lock()) {
        client->deliver(answer.success, answer.text, answer.error);
    }
    return true;
}

void IntakeThread::Stop() {
    state_->stop();
    if (handle_ != nullptr) {
        handle_->waitFor(STOP_LIMIT);
    }
    if (state_->stopRequested == 0) {
        handle_.reset();
    }
}

void IntakeThread::Terminate() {
    state_->end();
    if (handle_ != nullptr && state_->reading) {  // any other worker ends by itself
        handle_->terminate();
    }
}

int32_t IntakeThread::liveWorkers() {
    return liveWorkerCount;
}

}  // namespace intake
