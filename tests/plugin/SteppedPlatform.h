#pragma once

#include <functional>
#include <list>

#include "platform/Platform.h"
#include "tests/fakes/platform/FakeDatabases.h"
#include "tests/fakes/platform/FakeDiagnostics.h"
#include "tests/fakes/platform/FakeFiles.h"
#include "tests/fakes/platform/FakeHtml.h"
#include "tests/fakes/platform/FakeHttpClients.h"
#include "tests/fakes/platform/FakeTextFiles.h"
#include "tests/fakes/platform/FakeXml.h"

namespace intake {

/// A clock that stands where a test puts it. A worker that goes to sleep gives its thread back.
class SteppedClock final : public Clock {
public:
    struct Pause {};  // thrown out of a sleeping worker

    double milliseconds() override { return now; }
    LocalTime localTime() override { return {2026, 3, 5, 9, 7}; }
    [[noreturn]] void sleep(std::chrono::milliseconds) override { throw Pause{}; }
    [[noreturn]] void sleepUntil(Signal&) override { throw Pause{}; }
    [[noreturn]] bool sleepUntil(Signal&, std::chrono::milliseconds) override { throw Pause{}; }

    double now = 1'000'000;
};

/// Threads that run on the test's own thread, and only when the test says so.
class SteppedThreads final : public Threads {
public:
    std::unique_ptr<Mutex> createMutex() override;
    std::unique_ptr<ThreadHandle> start(std::function<void()> body) override;
    void enterWorker() override {}
    void leaveWorker() override {}

    /// Lets every thread go on to its next sleep.
    void step();

    size_t running() const { return bodies_.size(); }

    int started = 0;
    bool refuses = false;

private:
    std::list<std::function<void()>> bodies_;
};

/// The operating system of one test, without anything that runs by itself. While it lives, it is
/// what systemPlatform returns.
class SteppedPlatform {
public:
    SteppedPlatform();
    ~SteppedPlatform();
    SteppedPlatform(const SteppedPlatform&) = delete;
    SteppedPlatform& operator=(const SteppedPlatform&) = delete;

    SteppedClock clock;
    SteppedThreads threads;
    FakeDiagnostics diagnostics;
    FakeFiles files{diagnostics};
    FakeTextFiles textFiles;
    FakeHttpClients http;
    FakeXml xml;
    FakeHtml html;
    FakeDatabases databases;
    const Platform services{clock, threads, files, textFiles, diagnostics,
                            http,  xml,     html,  databases};

private:
    const Platform* previous_;
};

}  // namespace intake
