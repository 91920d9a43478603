#pragma once

#include <atomic>
#include <exception>

namespace intake {

/// What a step throws that nobody waits for any more.
class GivenUp : public std::exception {
public:
    const char* what() const noexcept override { return "The load was given up."; }
};

/// Says that nobody waits for a result any more. Set once, by any thread. Whatever can take long
/// watches it and gives up soon.
class EndMark {
public:
    void set() { ended_ = true; }
    bool isSet() const { return ended_; }

    /// Throws GivenUp.
    void throwIfSet() const {
        if (isSet()) {
            throw GivenUp();
        }
    }

private:
    std::atomic<bool> ended_ = false;
};

}  // namespace intake
