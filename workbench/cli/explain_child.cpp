#include "workbench/cli/explain_child.h"

#include "workbench/cli/child_process.h"
#include "workbench/cli/process.h"

namespace workbench {

namespace {

constexpr int timeoutSeconds = 20;

}  // namespace

std::string explainInChild(const std::string& scene, int32_t fontEncoding,
                           const std::string& plugin, const std::stop_token& stop) {
    std::vector<std::string> command{executablePath().string(),
                                     "explain",
                                     "--scene",
                                     "/dev/stdin",
                                     "--out",
                                     "json",
                                     "--timeout",
                                     std::to_string(timeoutSeconds),
                                     "--font-encoding",
                                     std::to_string(fontEncoding)};
    if (!plugin.empty()) command.insert(command.end(), {"--plugin", plugin});
    return askChild(command, scene, 2 * timeoutSeconds, stop).out;
}

}  // namespace workbench
