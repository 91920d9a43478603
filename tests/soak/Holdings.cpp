#include "tests/soak/Holdings.h"

#include <malloc.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace intake {

namespace {

size_t entriesOf(const char* directory) {
    const std::filesystem::directory_iterator entries(directory);
    return static_cast<size_t>(std::distance(begin(entries), end(entries)));
}

size_t residentPages() {
    std::ifstream figures("/proc/self/statm");
    size_t size = 0;
    size_t resident = 0;
    figures >> size >> resident;
    return resident;
}

size_t allocatedBytes() {
    const struct mallinfo2 figures = mallinfo2();
    return figures.uordblks + figures.hblkhd;
}

}  // namespace

Holdings::Holdings()
    : residentKb(residentPages() * static_cast<size_t>(sysconf(_SC_PAGESIZE)) / 1024),
      allocatedKb(allocatedBytes() / 1024),
      threads(entriesOf("/proc/self/task")),
      descriptors(entriesOf("/proc/self/fd")) {}

}  // namespace intake
