#pragma once

#include <stop_token>
#include <string>
#include <vector>

#include "workbench/cli/child_process.h"

namespace workbench {

/// By these variables `explain` is told of the scene whose instance it looks at: its file, and in a
/// sentence what older loads of the instance have left in the data store.
inline constexpr const char* sceneFileVariable = "INTAKE_WORKBENCH_SCENE_FILE";
inline constexpr const char* leftOverVariable = "INTAKE_WORKBENCH_LEFT_OVER";

/// A command of this program that is run in a process of its own, on a scene with one instance,
/// which it gets by its standard input. It leaves nothing behind.
struct SceneChild {
    std::string command;                 // "explain"
    std::vector<std::string> arguments;  // further ones
    std::string scene;
    std::string plugin;  // empty for the one that was built with this executable
    int fontEncoding = 1;
    double timeoutSeconds = 20;              // for what it waits for
    double patienceSeconds = 40;             // before it is ended
    std::vector<std::string> environment{};  // variables beside those of this process
};

/// Blocks until it ends, or a stop is requested; any thread. Throws std::system_error.
ChildAnswer ask(const SceneChild& child, const std::stop_token& stop = {});

}  // namespace workbench
