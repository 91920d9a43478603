#include "platform/linux/base/AbandonableCalls.h"

#include <exception>

namespace intake {

namespace {

constexpr std::chrono::milliseconds INTERVAL(50);

CallOutcome waitFor(Completion& call, const EndMark& endMark, std::chrono::milliseconds limit) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
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

CallOutcome AbandonableCalls::make(std::function<void()> call, const EndMark& endMark,
                                   std::chrono::milliseconds limit) {
    const CallOutcome before =
        former_ == nullptr ? CallOutcome::DONE : waitFor(*former_, endMark, limit);
    if (before != CallOutcome::DONE) {
        return before == CallOutcome::LATE ? CallOutcome::BUSY : before;
    }
    if (endMark.isSet()) {
        return CallOutcome::ENDED;
    }
    const auto thrown = std::make_shared<std::exception_ptr>();
    former_ = startDetached([call = std::move(call), thrown] {
                  try {
                      call();
                  } catch (...) {  // nothing may end the process
                      *thrown = std::current_exception();
                  }
              }).end;
    const CallOutcome outcome = waitFor(*former_, endMark, limit);
    if (outcome == CallOutcome::DONE && *thrown != nullptr) {
        std::rethrow_exception(*thrown);
    }
    return outcome;
}

}  // namespace intake
