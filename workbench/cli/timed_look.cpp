#include "workbench/cli/timed_look.h"

#include <chrono>
#include <future>
#include <thread>

#include "workbench/probe/explain/look_at_source.h"

namespace workbench {

std::optional<probe::Ladder> lookInTime(const probe::Settings& settings, double timeoutSeconds,
                                        bool mayWrite) {
    std::packaged_task<probe::Ladder()> look(
        [=] { return probe::lookAtSource(settings, timeoutSeconds, mayWrite); });
    std::future<probe::Ladder> ladder = look.get_future();
    std::thread(std::move(look)).detach();
    // The source may take all its time to come, and is then told as late by the look itself.
    const std::chrono::duration<double> patience(2 * timeoutSeconds);
    if (ladder.wait_for(patience) != std::future_status::ready) return std::nullopt;
    return ladder.get();
}

}  // namespace workbench
