#pragma once

#include <functional>
#include <mutex>
#include <vector>

namespace workbench {

/// Calls that wait for the host's thread: from a server's thread, where nothing of the host may be
/// touched, to the next frame.
class FrameQueue {
public:
    /// Any thread. False when so many wait that no more are taken.
    bool post(std::function<void()> call);

    /// Makes the calls, in their order, but begins none after two milliseconds: what is left waits
    /// for the next frame. Host's thread.
    void runFrame();

private:
    std::mutex mutex_;
    std::vector<std::function<void()>> calls_;
};

}  // namespace workbench
