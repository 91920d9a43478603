#include "workbench/cli/serve/FrameQueue.h"

#include <chrono>

namespace workbench {

namespace {

constexpr std::size_t mostCalls = 1000;
constexpr std::chrono::milliseconds frameShare{2};

}  // namespace

bool FrameQueue::post(std::function<void()> call) {
    const std::lock_guard lock(mutex_);
    if (calls_.size() == mostCalls) return false;
    calls_.push_back(std::move(call));
    return true;
}

void FrameQueue::runFrame() {
    std::vector<std::function<void()>> calls;
    {
        const std::lock_guard lock(mutex_);
        calls.swap(calls_);
    }
    const auto end = std::chrono::steady_clock::now() + frameShare;
    auto next = calls.begin();
    for (; next != calls.end() && std::chrono::steady_clock::now() < end; ++next)
        (*next)();
    const std::lock_guard lock(mutex_);
    calls_.insert(calls_.begin(), std::make_move_iterator(next),
                  std::make_move_iterator(calls.end()));
}

}  // namespace workbench
