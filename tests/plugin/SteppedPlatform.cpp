#include "tests/plugin/SteppedPlatform.h"

#include <system_error>
#include <utility>

namespace intake {

namespace {

const Platform* current = nullptr;

class UncontendedMutex final : public Mutex {
public:
    bool lock() override { return true; }
    bool tryLock() override { return true; }
    void unlock() override {}
};

class SteppedHandle final : public ThreadHandle {
public:
    uint64_t identifier() const override { return 1; }
    bool waitFor(std::chrono::milliseconds) override { return false; }
    void terminate() override {}
};

/// Whether the body came to its end.
bool runToNextSleep(const std::function<void()>& body) {
    try {
        body();
        return true;
    } catch (const SteppedClock::Pause&) {
        return false;
    }
}

}  // namespace

// Takes the place of the real system in this program.
const Platform& systemPlatform() {
    return *current;
}

std::unique_ptr<Mutex> SteppedThreads::createMutex() {
    return std::make_unique<UncontendedMutex>();
}

std::unique_ptr<ThreadHandle> SteppedThreads::start(std::function<void()> body) {
    if (refuses) {
        throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
    }
    ++started;
    bodies_.push_back(std::move(body));
    return std::make_unique<SteppedHandle>();
}

void SteppedThreads::step() {
    bodies_.remove_if(runToNextSleep);
}

SteppedPlatform::SteppedPlatform() : previous_(std::exchange(current, &services)) {}

SteppedPlatform::~SteppedPlatform() {
    current = previous_;
}

}  // namespace intake
