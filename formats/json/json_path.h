#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace intake {

/// One step of a path: which children of a node it takes.
struct PathStep {
    enum class Kind { PLAIN, INDEX, FILTER };

    std::string name;  // of the member; "*" is any
    Kind kind = Kind::PLAIN;
    int32_t index = 0;           // INDEX: the element of an array
    std::string field, value;    // FILTER: a member and the text that it must have
    bool directChildren = true;  // else the step searches at any depth
};

/// Reads a slash-separated path: `a/b`, `a//b` (b at any depth), `*`, `list[2]`, `list[@id = 7]`.
/// Never fails: what is no index and no filter leaves a step plain.
std::vector<PathStep> parsePath(std::string_view path);

}  // namespace intake
