#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace workbench {

/// Explains instances one after the other, each in a child process, on a thread of its own.
class ExplainJobs {
public:
    /// What `explain --out json` says; empty when it did not say anything in time.
    using Done = std::function<void(std::string)>;

    ExplainJobs(int32_t fontEncoding, std::string plugin);

    /// Any thread; `done` is called on the thread of the jobs. False when too many wait.
    bool add(std::string scene, Done done);

private:
    struct Job {
        std::string scene;
        Done done;
    };

    void run(const std::stop_token& stop);

    const int32_t fontEncoding_;
    const std::string plugin_;
    std::mutex mutex_;
    std::condition_variable_any added_;
    std::deque<Job> jobs_;
    std::jthread thread_;  // the last member: it uses the others
};

}  // namespace workbench
