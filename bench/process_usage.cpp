#include "bench/process_usage.h"

#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <ctime>
#include <fstream>

namespace bench {

namespace {

rusage usage() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    return used;
}

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

}  // namespace

double cpuSeconds() {
    const rusage used = usage();
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

ThreadUsage& ThreadUsage::operator+=(const ThreadUsage& more) {
    milliseconds += more.milliseconds;
    waits += more.waits;
    return *this;
}

ThreadUsage ThreadUsage::operator-(const ThreadUsage& less) const {
    return {milliseconds - less.milliseconds, waits - less.waits};
}

ThreadUsage threadUsage() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    rusage used{};
    getrusage(RUSAGE_THREAD, &used);
    return {static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6,
            static_cast<double>(used.ru_nvcsw)};
}

double peakBytes() {
    return static_cast<double>(usage().ru_maxrss) * 1024;  // the system counts in KiB
}

double residentBytes() {
    std::ifstream sizes("/proc/self/statm");
    double whole = 0, resident = 0;
    sizes >> whole >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

double wallSeconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

}  // namespace bench
