#include "workbench/cli/serve/Jobs.h"

#include <utility>

namespace workbench {

namespace {

constexpr std::size_t mostJobs = 16;

}  // namespace

Jobs::Jobs(std::size_t threads) : running_(threads) {
    for (std::size_t i = 0; i < threads; ++i)
        threads_.emplace_back([this](const std::stop_token& stop) { run(stop); });
}

bool Jobs::add(Job job) {
    const std::lock_guard lock(mutex_);
    if (jobs_.size() == mostJobs) return false;
    jobs_.push_back(std::move(job));
    added_.notify_one();
    return true;
}

void Jobs::requestStop() {
    for (std::jthread& thread : threads_)
        thread.request_stop();
}

bool Jobs::waitUntil(std::chrono::steady_clock::time_point end) {
    std::unique_lock lock(mutex_);
    return ended_.wait_until(lock, end, [this] { return running_ == 0; });
}

void Jobs::run(const std::stop_token& stop) {
    std::unique_lock lock(mutex_);
    while (added_.wait(lock, stop, [this] { return !jobs_.empty(); }) && !stop.stop_requested()) {
        Job job = std::exchange(jobs_.front(), nullptr);
        jobs_.pop_front();
        lock.unlock();
        job(stop);
        job = nullptr;  // what it holds goes here, too
        lock.lock();
    }
    --running_;
    ended_.notify_all();
}

}  // namespace workbench
