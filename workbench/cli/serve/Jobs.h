#pragma once

#include <array>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

namespace workbench {

/// What takes long, such as loads in child processes, on a few threads of its own.
class Jobs {
public:
    /// Ends soon when a stop is requested. Throws nothing.
    using Job = std::function<void(const std::stop_token&)>;

    Jobs();

    /// Any thread. False when too many wait.
    bool add(Job job);

    /// Lets the jobs that run come to their end, and begins no more.
    void end();

private:
    void run(const std::stop_token& stop);

    std::mutex mutex_;
    std::condition_variable_any added_;
    std::deque<Job> jobs_;
    std::array<std::jthread, 4> threads_;  // the last member: they use the others
};

}  // namespace workbench
