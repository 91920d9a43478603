// store FILE: executes a result script in the workbench's data store and reports time and peak
// memory on standard error.

#include "workbench/cobalt/Store.h"

#include <cstdio>
#include <exception>
#include <string>

#include "bench/process_usage.h"
#include "bench/read_file.h"

namespace {

int run(const std::string& path) {
    const std::string script = bench::readFile(path);
    cobalt::Store store;
    const double start = bench::wallSeconds();
    const double cpuStart = bench::cpuSeconds();
    const auto error = store.execute(script);
    const double seconds = bench::wallSeconds() - start;
    if (error) {
        std::fprintf(stderr, "store: %s: line %zu, column %zu: %s\n", path.c_str(), error->line,
                     error->column, error->message.c_str());
        return 1;
    }
    std::fprintf(stderr, "seconds %.4f cpu %.4f peak_mb %.1f fields %zu\n", seconds,
                 bench::cpuSeconds() - cpuStart, bench::peakBytes() / 1e6, store.size());
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: store FILE\n");
        return 2;
    }
    try {
        return run(argv[1]);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "store: %s\n", failure.what());
        return 1;
    }
}
