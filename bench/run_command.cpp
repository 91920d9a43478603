// run_command [--stats] (COMMAND | --file FILE): runs one command text through its reader, as the
// worker does, and writes the script to standard output. --stats reports time and peak memory on
// standard error.

#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "bench/process_usage.h"
#include "bench/read_file.h"
#include "pipeline/WorkerState.h"
#include "platform/Platform.h"
#include "readers/Readers.h"

namespace {

struct Options {
    bool stats = false;
    std::string command;
};

std::optional<Options> readOptions(int argc, char** argv) {
    Options options;
    int next = 1;
    if (next < argc && std::string_view(argv[next]) == "--stats") {
        options.stats = true;
        ++next;
    }
    if (argc - next == 2 && std::string_view(argv[next]) == "--file") {
        options.command = bench::readFile(argv[next + 1]);
    } else if (argc - next == 1 && !std::string_view(argv[next]).starts_with("--")) {
        options.command = argv[next];
    } else {
        return std::nullopt;
    }
    return options;
}

void printStats(double start, double cpuStart) {
    std::fprintf(stderr, "seconds %.4f cpu %.4f peak_mb %.1f\n", bench::wallSeconds() - start,
                 bench::cpuSeconds() - cpuStart, bench::peakBytes() / 1e6);
}

int run(const Options& options) {
    intake::WorkerState worker(intake::systemPlatform(),
                               intake::makerOfReaders(intake::systemPlatform()));
    bool success = false;
    std::string script, error;
    const double start = bench::wallSeconds();
    const double cpuStart = bench::cpuSeconds();
    // As a host's worker does: memory and locks cost more once a process has threads.
    std::thread([&] { worker.ProcessCommand(options.command, success, script, error); }).join();
    if (options.stats) {
        printStats(start, cpuStart);
    }
    if (!success) {
        std::fprintf(stderr, "%s\n", error.empty() ? "The source cannot be read." : error.c_str());
        return 1;
    }
    const bool written = std::fwrite(script.data(), 1, script.size(), stdout) == script.size() &&
                         std::fflush(stdout) == 0;
    if (!written) {
        std::perror("run_command");
    }
    return written ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        if (const auto options = readOptions(argc, argv)) {
            return run(*options);
        }
        std::fprintf(stderr, "usage: run_command [--stats] (COMMAND | --file FILE)\n");
        return 2;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "run_command: %s\n", failure.what());
        return 1;
    }
}
