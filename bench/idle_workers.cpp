// idle_workers [WORKERS [SECONDS [COMMAND]]]: what that many workers cost while none has anything
// to do; with a command text, after each has run that once, and what it keeps of it. What the loads
// print goes to standard error.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "bench/process_usage.h"
#include "pipeline/IntakeThread.h"
#include "platform/Platform.h"
#include "readers/Readers.h"

namespace {

using intake::IntakeThread;

void sleepSeconds(double seconds) {
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

struct CountingClient final : intake::IntakeClient {
    void deliver(bool success, const std::string&, const std::string& error) override {
        if (!success) {
            throw std::runtime_error("a load failed: " + error);
        }
        ++deliveries;
    }
    size_t deliveries = 0;
};

size_t openDescriptors() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return static_cast<size_t>(std::distance(begin(all), end(all)));
}

/// One after the other, so that no more memory is used at a time than is kept.
void loadOnce(std::vector<std::unique_ptr<IntakeThread>>& threads, const std::string& command) {
    const auto client = std::make_shared<CountingClient>();
    const double before = bench::residentBytes();
    const size_t descriptors = openDescriptors();
    for (size_t i = 0; i < threads.size(); ++i) {
        threads[i]->PostCommand(client, command);
        while (client->deliveries <= i) {
            sleepSeconds(0.001);
            threads[i]->DeliverOneAnswer();
        }
    }
    std::printf(
        "a load leaves %.0f KB and %.1f descriptors for each\n",
        (bench::residentBytes() - before) / 1e3 / static_cast<double>(threads.size()),
        static_cast<double>(openDescriptors() - descriptors) / static_cast<double>(threads.size()));
}

void measure(size_t workers, double seconds, const std::string& command) {
    std::vector<std::unique_ptr<IntakeThread>> threads(workers);
    for (auto& thread : threads) {
        thread = std::make_unique<IntakeThread>(intake::systemPlatform(),
                                                intake::makerOfReaders(intake::systemPlatform()));
    }
    sleepSeconds(1);  // until the last one has started
    if (!command.empty()) {
        loadOnce(threads, command);
    }
    const double start = bench::wallSeconds();
    const double cpuStart = bench::cpuSeconds();
    sleepSeconds(seconds);
    const double cpu = bench::cpuSeconds() - cpuStart;
    std::printf("%zu idle workers: %.1f %% of one core, peak %.1f MB\n", workers,
                100 * cpu / (bench::wallSeconds() - start), bench::peakBytes() / 1e6);
}

void waitForWorkersToEnd() {
    while (IntakeThread::liveWorkers() != 0) {
        sleepSeconds(0.01);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const int workers = argc > 1 ? std::atoi(argv[1]) : 500;
    const double seconds = argc > 2 ? std::atof(argv[2]) : 10;
    if (argc > 4 || workers <= 0 || seconds <= 0) {
        std::fprintf(stderr, "usage: idle_workers [WORKERS [SECONDS [COMMAND]]]\n");
        return 2;
    }
    try {
        measure(static_cast<size_t>(workers), seconds, argc > 3 ? argv[3] : "");
        waitForWorkersToEnd();
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "idle_workers: %s\n", failure.what());
        return 1;
    }
}
