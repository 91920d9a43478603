#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>
#include <vector>

namespace workbench {

/// What may take long, on a few threads of its own.
class Jobs {
public:
    /// Ends soon when a stop is requested, unless a disk does not answer. Throws nothing.
    using Job = std::function<void(const std::stop_token&)>;

    explicit Jobs(std::size_t threads);

    /// Any thread. False when too many wait.
    bool add(Job job);

    /// Tells the jobs that run to come to their end, and begins no more.
    void requestStop();

    /// Waits until they have, or until then. False when one has not: what it uses must stay.
    bool waitUntil(std::chrono::steady_clock::time_point end);

private:
    void run(const std::stop_token& stop);

    std::mutex mutex_;
    std::condition_variable_any added_;
    std::condition_variable_any ended_;
    std::deque<Job> jobs_;
    std::size_t running_;                // threads that have not ended
    std::vector<std::jthread> threads_;  // the last member: they use the others
};

}  // namespace workbench
