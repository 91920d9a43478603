#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

#include "tests/soak/Source.h"

namespace intake {

/// Renews the sources one after the other on a thread of its own, and takes some files away for a
/// while. All are there when it has been stopped.
class Rewriter {
public:
    explicit Rewriter(const std::vector<std::unique_ptr<Source>>& sources)
        : sources_(sources), thread_([this] { run(); }) {}
    ~Rewriter() { stop(); }
    Rewriter(const Rewriter&) = delete;
    Rewriter& operator=(const Rewriter&) = delete;

    void stop();

private:
    struct Removed {
        Source* source;
        std::chrono::steady_clock::time_point until;
    };

    void run();
    void change(Source& source);
    void putBack(std::chrono::steady_clock::time_point dueAt);

    const std::vector<std::unique_ptr<Source>>& sources_;
    std::vector<Removed> removed_;
    unsigned changes_ = 0;
    std::atomic<bool> isStopped_ = false;
    std::thread thread_;  // the last: it uses all others
};

}  // namespace intake
