#include "workbench/cli/run/SceneWatch.h"

#include <exception>
#include <utility>

#include "workbench/cli/scene_file.h"

namespace workbench {

SceneWatch::SceneWatch(std::string file) : file_(std::move(file)), known_(markOf(file_)) {}

void SceneWatch::runFrame(LiveScene& scene, RunView& view, double now) {
    constexpr double interval = 1;
    if (now - lookedAt_ < interval) return;
    lookedAt_ = now;
    const FileMark found = markOf(file_);
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
