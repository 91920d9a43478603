#include "platform/linux/odbc/abandonable_call.h"

#include "platform/linux/base/detached_thread.h"

namespace intake {

namespace {

constexpr std::chrono::milliseconds INTERVAL(50);

}  // namespace

CallOutcome makeAbandonableCall(std::function<void()> call, const EndMark& endMark,
                                std::chrono::milliseconds limit) {
    const std::shared_ptr<Completion> completion = startDetached(std::move(call)).end;
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!completion->waitFor(INTERVAL)) {
        if (endMark.isSet()) {
            return CallOutcome::ENDED;
        }
        if (std::chrono::steady_clock::now() >= deadline) {
            return CallOutcome::LATE;
        }
    }
    return CallOutcome::DONE;
}

}  // namespace intake
