#pragma once

#include <cstdint>
#include <deque>
#include <map>

#include "workbench/cli/serve/LoadLog.h"
#include "workbench/cli/serve/ServedScene.h"

namespace workbench {

/// Has loads explained that turned bad, while their source is still as it was: one at a time, and
/// of each instance one a minute at most. Host's thread.
class Ladders {
public:
    /// Both outlive it.
    Ladders(ServedScene& served, LoadLog& loads) : served_(served), loads_(loads) {}

    /// A load, with its number in the log.
    void note(const LoadEvent& event, std::uint64_t load, double now);

    /// Has the next one explained, if it is time.
    void runFrame(double now);

private:
    struct Wanted {
        std::uint32_t writer;
        std::uint64_t load;
    };

    LiveInstance* find(std::uint32_t writer) const;
    bool start(const Wanted& wanted, const LiveInstance& instance);
    void keep(const Wanted& wanted, const std::string& explanation);

    ServedScene& served_;
    LoadLog& loads_;
    std::deque<Wanted> wanted_;
    bool isBusy_ = false;
    std::map<std::uint32_t, bool> isBad_;      // the last load of a writer
    std::map<std::uint32_t, double> askedAt_;  // by writer
};

}  // namespace workbench
