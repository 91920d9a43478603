#pragma once

#include <chrono>
#include <thread>

namespace workbench {

/// Paces a loop at the host's 50 frames a second. A late frame is not made up for.
class FrameClock {
public:
    void waitForNextFrame() {
        next_ += std::chrono::milliseconds(20);
        const auto now = std::chrono::steady_clock::now();
        if (next_ < now) next_ = now;
        std::this_thread::sleep_until(next_);
    }

    double elapsedSeconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    }

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::chrono::steady_clock::time_point next_ = start_;
};

}  // namespace workbench
