#pragma once

#include <deque>
#include <map>
#include <string>
#include <vector>

#include "workbench/cli/run/LiveInstance.h"

namespace workbench {

/// The last loads of each instance, as JSON. Host's thread.
class LoadLog {
public:
    void add(const LoadEvent& event);

    /// The loads that were added since the last call, as a JSON array; empty when there were none.
    std::string takeNew();

    /// All that are kept, those of an instance in their order, as a JSON array.
    std::string all() const;

private:
    std::vector<std::string> new_;
    std::map<std::string, std::deque<std::string>> kept_;  // by instance
};

}  // namespace workbench
