#include "platform/linux/odbc/abandonable_call.h"

#include "platform/linux/base/detached_thread.h"

namespace intake {

namespace {

constexpr std::chrono::milliseconds INTERVAL(50);

using Deadline = std::chrono::steady_clock::time_point;

CallOutcome waitFor(Completion& call, const EndMark& endMark, Deadline deadline) {
    while (!call.waitFor(INTERVAL)) {
        if (endMark.isSet()) {
            return CallOutcome::ENDED;
        }
        if (std::chrono::steady_clock::now() >= deadline) {
            return CallOutcome::LATE;
        }
    }
    return CallOutcome::DONE;
}

}  // namespace

CallOutcome makeAbandonableCall(std::function<void()> call, const EndMark& endMark,
                                std::chrono::milliseconds limit) {
    thread_local std::shared_ptr<Completion> former;
    const Deadline deadline = std::chrono::steady_clock::now() + limit;
    if (former != nullptr) {
        const CallOutcome outcome = waitFor(*former, endMark, deadline);
        if (outcome != CallOutcome::DONE) {
            return outcome;
        }
    }
    former = startDetached(std::move(call)).end;
    return waitFor(*former, endMark, deadline);
}

}  // namespace intake
