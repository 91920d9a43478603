#include "workbench/cli/serve/SceneOnDisk.h"

#include <atomic>
#include <utility>

namespace workbench {

namespace {

constexpr double interval = 0.5;

}  // namespace

/// Written by a job until it is done, read in frames from then on.
struct SceneOnDisk::Look {
    Look(std::string theFile, std::optional<FileMark> theKnown)
        : file(std::move(theFile)), known(theKnown) {}

    void run() {
        mark = markOf(file);
        if (mark != known) content = contentOf(file);
        isDone = true;
    }

    const std::string file;
    const std::optional<FileMark> known;
    FileMark mark;
    std::optional<SceneContent> content;  // where it may have changed
    std::atomic<bool> isDone = false;
};

/// What is seen by a look that is under way belongs to what was followed before.
void SceneOnDisk::follow(std::string file, SceneContent content) {
    file_ = std::move(file);
    content_ = std::move(content);
    mark_.reset();
    look_.reset();
}

bool SceneOnDisk::runFrame(double now) {
    const bool hasChanged = takeOver();
    if (!file_.empty() && look_ == nullptr && now - lookedAt_ >= interval) {
        lookedAt_ = now;
        begin();
    }
    return hasChanged;
}

bool SceneOnDisk::takeOver() {
    if (look_ == nullptr || !look_->isDone) return false;
    const auto look = std::exchange(look_, nullptr);
    mark_ = look->mark;
    if (!look->content || look->content->stamp == content_.stamp) return false;
    content_ = std::move(*look->content);
    return true;
}

void SceneOnDisk::begin() {
    auto look = std::make_shared<Look>(file_, mark_);
    if (worker_([look] { look->run(); })) look_ = std::move(look);
}

}  // namespace workbench
