#pragma once

#include <libxml/xpath.h>
#include <time.h>

#include <atomic>
#include <chrono>
#include <optional>

#include "formats/source/EndMark.h"
#include "platform/linux/base/Watcher.h"

namespace intake {

/// Ends evaluations of XPath expressions once they have taken too much of the processor's time, all
/// together, or once nobody waits for them any more. Lives on the worker thread.
class XPathWatch {
public:
    /// Both are borrowed and outlive this object. `limit` is counted to some hundredths of a
    /// second.
    XPathWatch(xmlXPathContext& context, const EndMark& endMark, std::chrono::milliseconds limit);

    /// To be told around each evaluation.
    void begin() { evaluating_.store(true, std::memory_order_relaxed); }
    void end() { evaluating_.store(false, std::memory_order_relaxed); }

    /// Whether evaluations were ended because of their time.
    bool isLate() const { return late_; }

private:
    using Time = std::chrono::nanoseconds;

    std::optional<Watcher::Time> look();
    bool mustEnd();
    Time processorTime() const;

    xmlXPathContext& context_;
    const EndMark& endMark_;
    const Time limit_;
    clockid_t clock_;  // the worker's processor time
    Time seen_{0};     // on that clock
    Time used_{0};     // by evaluations
    std::atomic<bool> evaluating_ = false;
    std::atomic<bool> late_ = false;
    Watcher watcher_;  // goes first
};

}  // namespace intake
