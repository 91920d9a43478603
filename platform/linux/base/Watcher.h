#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace intake {

/// Looks at something again and again while its owner is inside a call that cannot look by itself.
/// Lives on the worker thread around that call; its own thread ends with it.
class Watcher {
public:
    using Time = std::chrono::milliseconds;

    /// Called on the watcher's thread; says when to look again, or that there is no need to. Must
    /// not throw. The owner does not go on while it looks.
    using Look = std::function<std::optional<Time>()>;

    /// Looks for the first time after `first`.
    Watcher(Time first, Look look);
    ~Watcher();
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

private:
    void watch(Time wait);

    const Look look_;
    std::mutex mutex_;
    std::condition_variable finished_;
    bool done_ = false;
    std::thread thread_;
};

}  // namespace intake
