#include "workbench/cli/run/SceneWatch.h"

#include <exception>
#include <filesystem>
#include <utility>

#include "workbench/cli/scene_file.h"

namespace workbench {

SceneWatch::SceneWatch(std::string file) : file_(std::move(file)), known_(stamp()) {}

std::optional<SceneWatch::Stamp> SceneWatch::stamp() const {
    std::error_code error;
    const auto time = std::filesystem::last_write_time(file_, error);
    if (error) return std::nullopt;
    const auto size = std::filesystem::file_size(file_, error);
    if (error) return std::nullopt;
    return Stamp{static_cast<std::int64_t>(time.time_since_epoch().count()), size,
                 fileIdentity(file_)};
}

void SceneWatch::runFrame(LiveScene& scene, RunView& view, double now) {
    constexpr double interval = 1;
    if (now - lookedAt_ < interval) return;
    lookedAt_ = now;
    const auto found = stamp();
    if (found == known_) return;
    known_ = found;
    try {
        for (const std::string& sentence : scene.take(readSceneFile(file_)))
            view.note(sentence, now);
    } catch (const std::exception& error) {
        view.note(std::string(error.what()) + " The scene goes on as it was.", now);
    }
}

}  // namespace workbench
