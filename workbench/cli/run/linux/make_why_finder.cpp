#include <map>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <thread>
#include <utility>

#include "workbench/cli/record_values.h"
#include "workbench/cli/run/WhyFinder.h"
#include "workbench/cli/run/stage_of_failure.h"
#include "workbench/cli/scene_child.h"

namespace workbench {

namespace {

constexpr double interval = 60;  // between two looks at an instance

/// A child process that explains a load, and the thread that talks with it.
class Look {
public:
    explicit Look(SceneChild child)
        : thread_([this, child = std::move(child)](const std::stop_token& stop) {
              const std::string why = explain(child, stop);
              const std::lock_guard lock(mutex_);
              why_ = why;
          }) {}

    /// What was found, which may be nothing; none as long as the look goes on.
    std::optional<std::string> result() {
        const std::lock_guard lock(mutex_);
        return why_;
    }

private:
    static std::string explain(const SceneChild& child, const std::stop_token& stop) {
        try {
            return stageOfFailure(ask(child, stop).out);
        } catch (const std::exception& error) {
            return error.what();
        }
    }

    std::mutex mutex_;  // of what follows
    std::optional<std::string> why_;
    std::jthread thread_;  // the last member: it uses the others
};

class LinuxWhyFinder final : public WhyFinder {
public:
    LinuxWhyFinder(const lumo::Host& host, const Options& options)
        : host_(host), options_(options) {}

    void runFrame(LiveScene& scene, RunView& view, double now) override {
        if (look_) {
            finish(scene, view, now);
        } else if (LiveInstance* const instance = nextOf(scene, now)) {
            start(scene, *instance, now);
        }
    }

private:
    static bool bringsNothing(const LiveInstance& instance) {
        const auto& last = instance.history().last();
        return last && last->outcome != LoadOutcome::Loaded;
    }

    /// One that brings nothing and has no load under way: it would be asked for twice at a time.
    LiveInstance* nextOf(LiveScene& scene, double now) const {
        for (const auto& instance : scene.instances()) {
            const auto looked = lookedAt_.find(instance->writer());
            const bool isDue = looked == lookedAt_.end() || now - looked->second >= interval;
            if (isDue && bringsNothing(*instance) && !instance->history().underWay(now))
                return instance.get();
        }
        return nullptr;
    }

    void start(const LiveScene& scene, const LiveInstance& instance, double now) {
        lookedAt_[instance.writer()] = now;
        writer_ = instance.writer();
        SceneChild child{"explain",
                         {"--out", "json"},
                         sceneOf(instance.name(), host_.parameters, instance.record()),
                         options_.plugin,
                         host_.fontEncoding};
        child.environment = scene.variablesFor(instance);
        look_.emplace(std::move(child));
    }

    void finish(LiveScene& scene, RunView& view, double now) {
        const auto why = look_->result();
        if (!why) return;
        look_.reset();
        for (const auto& instance : scene.instances()) {
            const bool isMeant = instance->writer() == writer_ && bringsNothing(*instance);
            if (!isMeant || why->empty()) continue;
            const std::string words = instance->redacted(*why);
            if (instance->history().explain(words)) view.explain(instance->name(), words, now);
        }
    }

    const lumo::Host& host_;
    const Options& options_;
    std::map<std::uint32_t, double> lookedAt_;  // by writer
    std::uint32_t writer_ = 0;                  // that is looked at
    std::optional<Look> look_;
};

}  // namespace

std::unique_ptr<WhyFinder> makeWhyFinder(const lumo::Host& host, const Options& options) {
    return std::make_unique<LinuxWhyFinder>(host, options);
}

}  // namespace workbench
