#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "formats/json/json_path.h"

namespace intake {

/// The rows that are wanted of a document that is still to be parsed.
struct JsonRowQuery {
    const std::vector<PathStep>& path;  // that leads straight down; without steps, to the root
    int64_t first, end;                 // rows from here up to `end` are wanted
    std::function<void()> take;         // called when a wanted row is whole
};

/// Whether the rows of a path are known as soon as they end: its steps have neither index nor
/// filter, and none searches at any depth.
bool leadsStraightDown(const std::vector<PathStep>& path);

}  // namespace intake
