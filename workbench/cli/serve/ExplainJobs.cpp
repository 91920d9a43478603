#include "workbench/cli/serve/ExplainJobs.h"

#include <system_error>

#include "workbench/cli/explain_child.h"

namespace workbench {

namespace {

constexpr std::size_t mostJobs = 16;

}  // namespace

ExplainJobs::ExplainJobs(int32_t fontEncoding, std::string plugin)
    : fontEncoding_(fontEncoding),
      plugin_(std::move(plugin)),
      thread_([this](const std::stop_token& stop) { run(stop); }) {}

bool ExplainJobs::add(std::string scene, Done done) {
    const std::lock_guard lock(mutex_);
    if (jobs_.size() == mostJobs) return false;
    jobs_.push_back({std::move(scene), std::move(done)});
    added_.notify_one();
    return true;
}

void ExplainJobs::run(const std::stop_token& stop) {
    for (;;) {
        Job job;
        {
            std::unique_lock lock(mutex_);
            if (!added_.wait(lock, stop, [this] { return !jobs_.empty(); })) return;
            job = std::move(jobs_.front());
            jobs_.pop_front();
        }
        try {
            job.done(explainInChild(job.scene, fontEncoding_, plugin_, stop));
        } catch (const std::system_error&) {
            job.done("");
        }
    }
}

}  // namespace workbench
