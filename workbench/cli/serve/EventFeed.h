#pragma once

#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

namespace workbench {

/// The last events, numbered, so that a page whose connection broke can catch up. Any thread.
class EventFeed {
public:
    /// Numbers an event, whose members are given as JSON, "\"type\": …", and keeps it. Returns the
    /// whole event as JSON.
    std::string add(const std::string& members);

    /// The number of the last one; 0 before the first.
    std::uint64_t last() const;

    /// The events behind that number, or one that says "resync" where some of them are gone, or
    /// where the number is from before the server began.
    std::vector<std::string> since(std::uint64_t number) const;

private:
    mutable std::mutex mutex_;
    std::uint64_t last_ = 0;
    std::deque<std::string> kept_;
};

}  // namespace workbench
