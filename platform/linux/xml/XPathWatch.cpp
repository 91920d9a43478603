#include "platform/linux/xml/XPathWatch.h"

#include <pthread.h>

namespace intake {

namespace {

constexpr std::chrono::milliseconds INTERVAL(20);

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
      watcher_([this] { watch(); }) {}

XPathWatch::~XPathWatch() {
    {
        const std::lock_guard lock(mutex_);
        done_ = true;
    }
    finished_.notify_one();
    watcher_.join();
}

XPathWatch::Time XPathWatch::processorTime() const {
    timespec time{};
    clock_gettime(clock_, &time);
    return std::chrono::seconds(time.tv_sec) + Time(time.tv_nsec);
}

/// The library offers no other way in than the limit of its steps, at which it looks with every
/// node. From then on every evaluation of this context fails.
void XPathWatch::watch() {
    std::unique_lock lock(mutex_);
    while (!finished_.wait_for(lock, INTERVAL, [this] { return done_; })) {
        if (mustEnd()) {
            std::atomic_ref(context_.opLimit).store(1, std::memory_order_relaxed);
            return;
        }
    }
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
