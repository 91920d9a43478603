#include "formats/json/json_rows.h"

#include <algorithm>

namespace intake {

bool leadsStraightDown(const std::vector<PathStep>& path) {
    return std::all_of(path.begin(), path.end(), [](const PathStep& step) {
        return step.directChildren && step.kind == PathStep::Kind::PLAIN;
    });
}

}  // namespace intake
