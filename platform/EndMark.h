#pragma once

#include <atomic>

namespace intake {

/// Says that nobody waits for a worker's result any more. Set once, by the host's thread. Where a
/// thread cannot be ended by force, services that can block for long watch it and give up soon.
class EndMark {
public:
    void set() { ended_ = true; }
    bool isSet() const { return ended_; }

private:
    std::atomic<bool> ended_ = false;
};

}  // namespace intake
