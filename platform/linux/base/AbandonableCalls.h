#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "formats/source/EndMark.h"
#include "platform/linux/base/detached_thread.h"

namespace intake {

enum class CallOutcome {
    DONE,
    ENDED,  // the end mark was set
    LATE,   // the time was over
    BUSY,   // it was not made, for a former one still goes on
};

/// Calls for one purpose, such as connecting, that may block. Used by one thread, which keeps it
/// for as long as it lives.
class AbandonableCalls {
public:
    /// Makes a call on a thread of its own, and waits for it: until the end mark is set, or for
    /// `limit`. A call that is not waited for goes on by itself; what it needs it must own, and
    /// what it throws is lost; otherwise that is thrown here. With a set mark it is not made.
    /// Until it ends, no other is made here, but waited as long for that: they would pile up where
    /// nothing ever answers.
    CallOutcome make(std::function<void()> call, const EndMark& endMark,
                     std::chrono::milliseconds limit);

private:
    std::shared_ptr<Completion> former_;  // null before the first
};

}  // namespace intake
