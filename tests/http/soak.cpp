// http_soak [SECONDS]: fifty instances load from one web server every tenth of a second, for a
// minute unless told otherwise, while the server is stopped and started three times. Fails when a
// load that was asked for after the last start does, or when anything is left over at the end. The
// messages of the loads come with it: http_soak > /dev/null 2> soak.log; tail -n 2 soak.log

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <memory>
#include <thread>
#include <vector>

#include "pipeline/IntakeThread.h"
#include "readers/Readers.h"
#include "tests/http/support/WebServer.h"
#include "tests/support/eventually.h"

namespace intake {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr size_t INSTANCES = 50;
constexpr int RESTARTS = 3;
constexpr milliseconds PERIOD{100};
constexpr milliseconds OUTAGE{1000};

enum class Outcome { NONE, LOADED, FAILED };

/// One load that was asked for.
class Load final : public IntakeClient {
public:
    explicit Load(bool mustSucceed) : mustSucceed_(mustSucceed) {}

    void deliver(bool success, const std::string& answer, const std::string&) override {
        outcome_ = success && answer == "T={v=1;};" ? Outcome::LOADED : Outcome::FAILED;
    }

    Outcome outcome() const { return outcome_; }
    bool isAwaited() const { return mustSucceed_ && outcome_ == Outcome::NONE; }
    bool isWrong() const { return mustSucceed_ && outcome_ != Outcome::LOADED; }

private:
    bool mustSucceed_;
    Outcome outcome_ = Outcome::NONE;
};

size_t entriesOf(const char* directory) {
    size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(directory)) {
        ++count;
    }
    return count;
}

/// What the process holds.
struct Holdings {
    size_t threads = entriesOf("/proc/self/task");
    size_t descriptors = entriesOf("/proc/self/fd");
    bool operator==(const Holdings&) const = default;
};

class Soak {
public:
    explicit Soak(milliseconds duration) : duration_(duration) {
        server_.write("data.json", R"({"v":1})");
        for (size_t i = 0; i < INSTANCES; ++i) {
            instances_.push_back(
                std::make_unique<IntakeThread>(systemPlatform(), makerOfReaders(systemPlatform())));
        }
    }

    /// Returns how many loads went wrong.
    size_t run() {
        const milliseconds part = duration_ / (RESTARTS + 1);
        for (int restart = 0; restart < RESTARTS; ++restart) {
            loadFor(part - OUTAGE);
            server_.stop();
            loadFor(OUTAGE);
            server_.start();
        }
        mustSucceed_ = true;
        loadFor(part);
        eventually([this] {
            deliverAll();
            return std::none_of(loads_.begin(), loads_.end(),
                                [](const auto& load) { return load->isAwaited(); });
        });
        return report();
    }

private:
    void loadFor(milliseconds time) {
        const auto end = steady_clock::now() + time;
        while (steady_clock::now() < end) {
            const auto next = steady_clock::now() + PERIOD;
            for (const auto& instance : instances_) {
                loads_.push_back(std::make_shared<Load>(mustSucceed_));
                instance->PostCommand(loads_.back(), command_);
            }
            while (steady_clock::now() < next) {
                deliverAll();
                std::this_thread::sleep_for(milliseconds(5));
            }
        }
    }

    void deliverAll() {
        for (const auto& instance : instances_) {
            instance->DeliverOneAnswer();
        }
    }

    size_t report() const {
        size_t loaded = 0;
        size_t failed = 0;
        size_t wrong = 0;
        for (const auto& load : loads_) {
            loaded += load->outcome() == Outcome::LOADED ? 1 : 0;
            failed += load->outcome() == Outcome::FAILED ? 1 : 0;
            wrong += load->isWrong() ? 1 : 0;
        }
        std::fprintf(stderr, "%zu loads: %zu loaded, %zu failed, %zu of them wrongly\n",
                     loads_.size(), loaded, failed, wrong);
        return wrong;
    }

    milliseconds duration_;
    WebServer server_{""};
    std::string command_ = "MODE |JSON| FILENAME |" + server_.url("/data.json") + "| TABLE |T| ";
    std::vector<std::unique_ptr<IntakeThread>> instances_;
    std::vector<std::shared_ptr<Load>> loads_;
    bool mustSucceed_ = false;
};

bool run(milliseconds duration) {
    const Holdings before;
    const size_t wrong = Soak(duration).run();
    const bool ended =
        eventually([&] { return IntakeThread::liveWorkers() == 0 && Holdings() == before; });
    const Holdings after;
    std::fprintf(stderr, "threads %zu before, %zu after; descriptors %zu before, %zu after\n",
                 before.threads, after.threads, before.descriptors, after.descriptors);
    return wrong == 0 && ended;
}

}  // namespace

}  // namespace intake

int main(int argc, char** argv) {
    try {
        const long seconds = argc > 1 ? std::strtol(argv[1], nullptr, 10) : 60;
        return intake::run(std::chrono::seconds(seconds)) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "http_soak: %s\n", failure.what());
        return 1;
    }
}
