#include "workbench/cli/serve/Jobs.h"

#include <utility>

namespace workbench {

namespace {

constexpr std::size_t mostJobs = 16;

}  // namespace

Jobs::Jobs() {
    for (std::jthread& thread : threads_)
        thread = std::jthread([this](const std::stop_token& stop) { run(stop); });
}

bool Jobs::add(Job job) {
    const std::lock_guard lock(mutex_);
    if (jobs_.size() == mostJobs) return false;
    jobs_.push_back(std::move(job));
    added_.notify_one();
    return true;
}

void Jobs::end() {
    for (std::jthread& thread : threads_)
        thread.request_stop();
    for (std::jthread& thread : threads_)
        thread.join();
}

void Jobs::run(const std::stop_token& stop) {
    for (;;) {
        Job job;
        {
            std::unique_lock lock(mutex_);
            if (!added_.wait(lock, stop, [this] { return !jobs_.empty(); })) return;
            job = std::move(jobs_.front());
            jobs_.pop_front();
        }
        job(stop);
    }
}

}  // namespace workbench
