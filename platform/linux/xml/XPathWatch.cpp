#include "platform/linux/xml/XPathWatch.h"

#include <pthread.h>

namespace intake {

namespace {

constexpr Watcher::Time INTERVAL(20);

clockid_t clockOfThisThread() {
    clockid_t clock = CLOCK_MONOTONIC;
    pthread_getcpuclockid(pthread_self(), &clock);
    return clock;
}

}  // namespace

XPathWatch::XPathWatch(xmlXPathContext& context, const EndMark& endMark,
                       std::chrono::milliseconds limit)
    : context_(context),
      endMark_(endMark),
      limit_(limit),
      clock_(clockOfThisThread()),
      seen_(processorTime()),
      watcher_(INTERVAL, [this] { return look(); }) {}

XPathWatch::Time XPathWatch::processorTime() const {
    timespec time{};
    clock_gettime(clock_, &time);
    return std::chrono::seconds(time.tv_sec) + Time(time.tv_nsec);
}

/// The library offers no other way in than the limit of its steps, at which it looks with every
/// node. From then on every evaluation of this context fails.
std::optional<Watcher::Time> XPathWatch::look() {
    if (!mustEnd()) {
        return INTERVAL;
    }
    std::atomic_ref(context_.opLimit).store(1, std::memory_order_relaxed);
    return std::nullopt;
}

/// What the worker uses between two looks counts when it evaluates at the second.
bool XPathWatch::mustEnd() {
    const Time now = processorTime();
    used_ += evaluating_.load(std::memory_order_relaxed) ? now - seen_ : Time(0);
    seen_ = now;
    late_ = used_ >= limit_;
    return late_ || endMark_.isSet();
}

}  // namespace intake
