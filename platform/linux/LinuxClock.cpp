#include "platform/linux/LinuxClock.h"

#include <ctime>
#include <thread>

namespace intake {

double LinuxClock::milliseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) * 1e-6;
}

LocalTime LinuxClock::localTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min};
}

void LinuxClock::sleep(std::chrono::milliseconds duration) {
    std::this_thread::sleep_for(duration);
}

}  // namespace intake
