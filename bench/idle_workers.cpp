// idle_workers [WORKERS [SECONDS]]: what that many workers cost while none has anything to do.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
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

void measure(size_t workers, double seconds) {
    std::vector<std::unique_ptr<IntakeThread>> threads(workers);
    for (auto& thread : threads) {
        thread = std::make_unique<IntakeThread>(intake::systemPlatform(),
                                                intake::makerOfReaders(intake::systemPlatform()));
    }
    sleepSeconds(1);  // until the last one has started
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
    if (argc > 3 || workers <= 0 || seconds <= 0) {
        std::fprintf(stderr, "usage: idle_workers [WORKERS [SECONDS]]\n");
        return 2;
    }
    try {
        measure(static_cast<size_t>(workers), seconds);
        waitForWorkersToEnd();
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "idle_workers: %s\n", failure.what());
        return 1;
    }
}
