// soak [SECONDS [INSTANCES]]: that many instances of all kinds load while their files are rewritten
// and taken away and their server fails. Prints what it holds once a minute, and at the end how
// that grew; what the loads complain of goes to standard error: soak 3600 2> soak.log The status is
// 1 when anything was shown wrongly or not at all in the end, or when something grows.

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <stdexcept>
#include <vector>

#include "tests/soak/FailingServer.h"
#include "tests/soak/Holdings.h"
#include "tests/soak/Rewriter.h"
#include "tests/soak/Verdict.h"
#include "tests/soak/WatchedInstance.h"
#include "tests/support/TempDirectory.h"
#include "tests/support/eventually.h"
#include "workbench/cli/FrameClock.h"

namespace intake {

namespace {

using Sources = std::vector<std::unique_ptr<Source>>;

/// In turn of every kind from a file, and of those that have a URL from the server.
Sources makeSources(size_t count) {
    constexpr std::array<std::pair<Kind, Source::Place>, 8> TURNS{{
        {Kind::JSON, Source::Place::FILE},
        {Kind::JSON, Source::Place::SERVER},
        {Kind::XML, Source::Place::FILE},
        {Kind::XML, Source::Place::SERVER},
        {Kind::HTML, Source::Place::FILE},
        {Kind::HTML, Source::Place::SERVER},
        {Kind::SQL, Source::Place::FILE},
        {Kind::WORKSHEET, Source::Place::FILE},
    }};
    Sources sources;
    for (size_t i = 0; i < count; ++i) {
        const auto& [kind, place] = TURNS[i % TURNS.size()];
        sources.push_back(std::make_unique<Source>(kind, static_cast<int>(i), place));
        sources.back()->renew();
    }
    return sources;
}

/// Two of three load by themselves, every second to every third second.
double intervalOf(size_t instance) {
    return instance % 3 == 0 ? 0 : 1 + static_cast<double>(instance % 21) / 10;
}

class Soak {
public:
    explicit Soak(size_t count) : sources_(makeSources(count)) {
        for (size_t i = 0; i < count; ++i) {
            instances_.push_back(std::make_unique<WatchedInstance>(host_, plugin_, *sources_[i],
                                                                   server_.url(), intervalOf(i)));
        }
    }

    /// Returns how many instances never showed the last version of their source.
    size_t run(double seconds, Verdict& verdict) {
        {
            const Rewriter rewriter(sources_);
            runFaultsFor(seconds, verdict);
        }
        server_.mend();
        return waitForLastVersions();
    }

    const Tally& tally() const { return tally_; }

private:
    void runFaultsFor(double seconds, Verdict& verdict) {
        const workbench::FrameClock clock;
        double nextFigures = 1;
        while (clock.elapsedSeconds() < seconds) {
            server_.setOutage(outageAt(clock.elapsedSeconds()));
            runFrame();
            if (clock.elapsedSeconds() >= nextFigures) {
                verdict.add(clock.elapsedSeconds(), Holdings(), tally_);
                nextFigures += 1;
            }
        }
    }

    /// Two seconds of every ten, each time in another way.
    static Fault outageAt(double seconds) {
        const int second = static_cast<int>(seconds);
        const int ways = 4;
        return second % 10 == 3 || second % 10 == 4 ? static_cast<Fault>(1 + second / 10 % ways)
                                                    : Fault::NONE;
    }

    void runFrame() {
        pressButtons();
        for (const auto& instance : instances_) {
            instance->runFrame(tally_);
        }
        frames_.waitForNextFrame();
    }

    /// Each about every two seconds, and now and then impatiently.
    void pressButtons() {
        constexpr size_t FRAMES_BETWEEN = 100;
        ++frame_;
        for (size_t i = frame_ % FRAMES_BETWEEN; i < instances_.size(); i += FRAMES_BETWEEN) {
            const bool impatient = frame_ % 7 == 0;
            for (int presses = impatient ? 4 : 1; presses > 0; --presses) {
                if (!instances_[i]->loadsByItself()) {
                    instances_[i]->pressButton();
                }
            }
        }
    }

    size_t waitForLastVersions() {
        const workbench::FrameClock clock;
        const auto lag = [this] {
            return std::count_if(instances_.begin(), instances_.end(),
                                 [](const auto& each) { return !each->showsNewest(); });
        };
        constexpr double LONGEST_RECOVERY = 180;
        while (lag() != 0 && clock.elapsedSeconds() < LONGEST_RECOVERY) {
            runFrame();
        }
        return static_cast<size_t>(lag());
    }

    Sources sources_;
    FailingServer server_{
        [this](int source) { return sources_.at(static_cast<size_t>(source))->document(); }};
    lumo::Host host_;
    const lumo::Plugin plugin_{PLUGIN};
    workbench::FrameClock frames_;
    std::vector<std::unique_ptr<WatchedInstance>> instances_;
    Tally tally_;
    size_t frame_ = 0;
};

/// Where to report; the plugin's own messages on standard output go nowhere.
FILE* keepStandardOutput() {
    FILE* const kept = fdopen(dup(STDOUT_FILENO), "w");
    if (kept == nullptr || std::freopen("/dev/null", "w", stdout) == nullptr) {
        throw std::runtime_error("there is no standard output");
    }
    setlinebuf(kept);
    return kept;
}

/// Starts the program anew without the memory that malloc keeps for each thread: it counts as
/// allocated, and fills for hours.
void leaveThreadsNoMemory(char** argv) {
    const char* const setting = "GLIBC_TUNABLES";
    if (std::getenv(setting) == nullptr) {
        setenv(setting, "glibc.malloc.tcache_count=0", 1);
        execv("/proc/self/exe", argv);
    }
}

bool run(double seconds, size_t count) {
    const TempWorkingDirectory folder;
    FILE* const out = keepStandardOutput();
    const Holdings before;
    Verdict verdict(seconds, out);
    size_t behind = 0;
    {
        Soak soak(count);
        behind = soak.run(seconds, verdict);
        verdict.report(soak.tally(), behind);
    }
    const bool ended = eventually([&] { return Holdings().threads <= before.threads; });
    const Holdings after;
    std::fprintf(out, "Threads %zu before, %zu after; descriptors %zu before, %zu after\n",
                 before.threads, after.threads, before.descriptors, after.descriptors);
    return verdict.isGood() && ended && after.descriptors <= before.descriptors;
}

}  // namespace

}  // namespace intake

int main(int argc, char** argv) {
    intake::leaveThreadsNoMemory(argv);
    try {
        const double seconds = argc > 1 ? std::atof(argv[1]) : 60;
        const int instances = argc > 2 ? std::atoi(argv[2]) : 300;
        return intake::run(seconds, static_cast<size_t>(instances)) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "soak: %s\n", failure.what());
        return 1;
    }
}
