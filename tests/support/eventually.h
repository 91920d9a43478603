#pragma once

#include <chrono>
#include <thread>

namespace intake {

/// Waits until another thread has made the condition true. The limit only keeps a broken test from
/// waiting for ever: it is far above what any machine needs.
template <class Condition>
bool eventually(Condition condition) {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(120);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > limit) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

}  // namespace intake
