#pragma once

#include <chrono>
#include <functional>

#include "formats/source/EndMark.h"

namespace intake {

enum class CallOutcome {
    DONE,
    ENDED,  // the end mark was set
    LATE,   // the time was over
    BUSY,   // it was not made, for a former one of this thread still goes on
};

/// Makes a call that may block on a thread of its own, and waits for it: until the end mark is set,
/// or for `limit`. A call that is not waited for goes on by itself; what it needs it must own, and
/// what it throws is lost; otherwise that is thrown here.
/// Until it ends, the thread makes no other, and waits as long for that: they would pile up where
/// nothing ever answers.
CallOutcome makeAbandonableCall(std::function<void()> call, const EndMark& endMark,
                                std::chrono::milliseconds limit);

}  // namespace intake
