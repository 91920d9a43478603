// load_often LOADS PER_SECOND COMMAND: runs one command text through its reader again and again, so
// many times a second, as one worker does, and prints the processor time of a load in milliseconds
// on standard error. What the loads print goes to standard output. Fails with the first load that
// does, or whose script is not that of the first.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <string>
#include <thread>

#include "bench/process_usage.h"
#include "pipeline/WorkerState.h"
#include "platform/Platform.h"
#include "readers/Readers.h"

namespace {

std::string load(intake::WorkerState& worker, const std::string& command) {
    bool success = false;
    std::string script, error;
    worker.ProcessCommand(command, success, script, error);
    if (!success) {
        throw std::runtime_error("a load failed: " + error);
    }
    return script;
}

void run(int loads, double perSecond, const std::string& command) {
    intake::WorkerState worker(intake::systemPlatform(),
                               intake::makerOfReaders(intake::systemPlatform()));
    const std::string script = load(worker, command);  // what only the first one needs is not meant
    const std::chrono::duration<double> period(1 / perSecond);
    const auto start = std::chrono::steady_clock::now();
    const double cpuStart = bench::cpuSeconds();
    for (int i = 1; i <= loads; ++i) {
        std::this_thread::sleep_until(start + i * period);
        if (load(worker, command) != script) {
            throw std::runtime_error("a load gave another script");
        }
    }
    std::fprintf(stderr, "%.3f\n", (bench::cpuSeconds() - cpuStart) * 1e3 / loads);
}

}  // namespace

int main(int argc, char** argv) {
    const int loads = argc == 4 ? std::atoi(argv[1]) : 0;
    const double perSecond = argc == 4 ? std::atof(argv[2]) : 0;
    if (loads <= 0 || perSecond <= 0) {
        std::fprintf(stderr, "usage: load_often LOADS PER_SECOND COMMAND\n");
        return 2;
    }
    try {
        run(loads, perSecond, argv[3]);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "load_often: %s\n", failure.what());
        return 1;
    }
}
