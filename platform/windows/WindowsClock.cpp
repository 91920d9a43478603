#include "platform/windows/WindowsClock.h"

#include <windows.h>

namespace intake {

namespace {

double microsecondsPerTick() {
    LARGE_INTEGER frequency{};
    QueryPerformanceFrequency(&frequency);
    return 1.0 / (static_cast<double>(frequency.QuadPart) / 1'000'000);
}

}  // namespace

double WindowsClock::milliseconds() {
    static const double factor = microsecondsPerTick();
    LARGE_INTEGER ticks{};
    QueryPerformanceCounter(&ticks);
    return static_cast<double>(ticks.QuadPart) * factor * 0.001;
}

LocalTime WindowsClock::localTime() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute};
}

void WindowsClock::sleep(std::chrono::milliseconds duration) {
    Sleep(static_cast<DWORD>(duration.count()));
}

}  // namespace intake
