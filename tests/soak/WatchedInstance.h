#pragma once

#include <string>

#include "tests/soak/Source.h"
#include "workbench/cli/LoadWatch.h"
#include "workbench/lumo/Instance.h"

namespace intake {

/// What became of the loads so far.
struct Tally {
    size_t loaded = 0;
    size_t failed = 0;
    size_t wrong = 0;

    size_t all() const { return loaded + failed + wrong; }
};

/// An instance of the plugin that loads one source, and what it showed of it last. Host's thread.
class WatchedInstance {
public:
    /// Loads by itself every `seconds`; with 0 only by the button.
    WatchedInstance(lumo::Host& host, const lumo::Plugin& plugin, const Source& source,
                    const std::string& server, double seconds);

    void pressButton();

    /// Runs a frame, and counts and judges the load that it showed.
    void runFrame(Tally& tally);

    bool loadsByItself() const { return loadsByItself_; }
    bool showsNewest() const { return shown_ == source_.version(); }

private:
    void judge(const workbench::Outcome& outcome, Tally& tally);

    const Source& source_;
    const bool loadsByItself_;
    lumo::Instance instance_;
    workbench::LoadWatch watch_;
    int shown_ = 0;  // version; 0 for none, or when the last load failed
};

}  // namespace intake
