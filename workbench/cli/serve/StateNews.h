#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "workbench/cli/run/LiveScene.h"

namespace workbench {

/// What pages do not know yet of how the instances are. Host's thread.
class StateNews {
public:
    /// Something has happened to that one, though it may look as before.
    void note(std::uint32_t writer) { noted_.insert(writer); }

    /// The events that tell pages, each as the members of a JSON object.
    std::vector<std::string> take(LiveScene& scene, double now);

private:
    std::string takeGone(const std::map<std::uint32_t, InstanceState>& states);

    std::set<std::uint32_t> noted_;
    std::map<std::uint32_t, InstanceState> told_;  // by writer
};

}  // namespace workbench
