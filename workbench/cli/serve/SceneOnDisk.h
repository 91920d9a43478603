#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "workbench/cli/run/FileMark.h"
#include "workbench/cli/serve/SceneContent.h"

namespace workbench {

/// A scene's file as it is on disk, looked at twice a second by jobs, one at a time: a disk that
/// does not answer holds up one of them, and no frame. Host's thread.
class SceneOnDisk {
public:
    /// Has a job done on another thread. False when it takes none just now.
    using Worker = std::function<bool(std::function<void()> job)>;

    explicit SceneOnDisk(Worker worker) : worker_(std::move(worker)) {}

    /// Looks at another file, whose content is known. An empty name stands for none.
    void follow(std::string file, SceneContent content);

    /// Takes over what was seen, and has it looked at again when it is time. Whether the content is
    /// another now.
    bool runFrame(double now);

    const SceneContent& content() const { return content_; }

private:
    struct Look;

    bool takeOver();
    void begin();

    const Worker worker_;
    std::string file_;
    std::optional<FileMark> mark_;  // as it was seen last; nothing before the first look
    SceneContent content_{std::nullopt};
    double lookedAt_ = 0;
    std::shared_ptr<Look> look_;  // under way
};

}  // namespace workbench
