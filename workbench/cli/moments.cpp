#include "workbench/cli/moments.h"

#include <chrono>

namespace workbench {

std::uint32_t momentNow() {
    using Hundredths = std::chrono::duration<std::uint32_t, std::centi>;
    static const auto start = std::chrono::steady_clock::now();
    const auto passed = std::chrono::steady_clock::now() - start;
    return std::chrono::duration_cast<Hundredths>(passed).count() + 1;
}

double secondsSince(std::uint32_t moment) {
    const std::uint32_t now = momentNow();
    return moment < now ? (now - moment) / 100.0 : 0;
}

}  // namespace workbench
