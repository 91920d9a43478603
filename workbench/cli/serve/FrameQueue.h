#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <utility>
#include <vector>

namespace workbench {

/// Calls that wait for the host's thread: from a server's thread, where nothing of the host may be
/// touched, to the next frame.
class FrameQueue {
public:
    /// Any thread. False when so many wait that no more are taken.
    bool post(std::function<void()> call);

    /// Makes a call on the host's thread and waits for what it returns, also for a place where no
    /// more calls are taken; nothing when a stop is requested. Any thread but the host's. What the
    /// call refers to may go when this returns.
    template <class Result>
    std::optional<Result> ask(std::function<Result()> call, const std::stop_token& stop) {
        struct Asked {
            std::mutex mutex;
            bool isGivenUp = false;
            std::promise<Result> result;
        };
        const auto asked = std::make_shared<Asked>();
        auto answer = asked->result.get_future();
        const std::function<void()> make = [asked, call = std::move(call)] {
            const std::lock_guard lock(asked->mutex);
            if (!asked->isGivenUp) asked->result.set_value(call());
        };
        constexpr std::chrono::milliseconds untilStop{50};  // for a stop to be noticed
        for (bool isTaken = post(make); !stop.stop_requested(); isTaken = isTaken || post(make)) {
            if (answer.wait_for(untilStop) == std::future_status::ready) return answer.get();
        }
        const std::lock_guard lock(asked->mutex);
        asked->isGivenUp = true;
        return std::nullopt;
    }

    /// Makes the calls, in their order, but begins none after two milliseconds: what is left waits
    /// for the next frame. Host's thread.
    void runFrame();

private:
    std::mutex mutex_;
    std::vector<std::function<void()>> calls_;
};

}  // namespace workbench
