#pragma once

#include <string>

#include "workbench/cli/run/FileMark.h"
#include "workbench/cli/run/RunView.h"

namespace workbench {

/// Looks once a second whether the file of a scene has changed, and lets the scene take it up. One
/// that cannot be read is told, and the scene goes on as it was. Main thread.
class SceneWatch {
public:
    explicit SceneWatch(std::string file);

    void runFrame(LiveScene& scene, RunView& view, double now);

private:
    const std::string file_;
    FileMark known_;
    double lookedAt_ = 0;
};

}  // namespace workbench
