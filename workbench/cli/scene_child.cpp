#include "workbench/cli/scene_child.h"

#include "workbench/cli/process.h"

namespace workbench {

ChildAnswer ask(const SceneChild& child, const std::stop_token& stop) {
    std::vector<std::string> command{executablePath().string(),
                                     child.command,
                                     "--scene",
                                     "/dev/stdin",
                                     "--timeout",
                                     std::to_string(child.timeoutSeconds),
                                     "--font-encoding",
                                     std::to_string(child.fontEncoding)};
    if (!child.plugin.empty()) command.insert(command.end(), {"--plugin", child.plugin});
    command.insert(command.end(), child.arguments.begin(), child.arguments.end());
    return askChild(command, child.scene, child.patienceSeconds, stop, child.environment);
}

}  // namespace workbench
