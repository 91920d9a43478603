#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace probe {

/// One step of a path as it is written.
struct PathSegment {
    std::string text;       // without the blanks around it
    bool anyDepth = false;  // it stands behind an empty segment
};

/// The steps of a JSON path as they are written, in order, as many as the plugin takes from it.
std::vector<PathSegment> pathSegments(std::string_view path);

/// The first `count` of the steps as a path.
std::string pathOf(const std::vector<PathSegment>& segments, std::size_t count);
std::string pathOf(const std::vector<PathSegment>& segments);

/// The path with the parents that ".." means in other notations.
std::vector<PathSegment> withoutDots(const std::vector<PathSegment>& segments);

/// The name that a step asks for, without what stands in brackets.
std::string nameIn(const PathSegment& segment);

/// The step with another name in place of its own.
PathSegment renamed(const PathSegment& segment, std::string_view name);

/// Whether a step can ask for a member of that name.
bool canBeNamed(std::string_view name);

/// The path that a text in the manner of JSONPath, or one with dots between its names, means. Empty
/// when it is neither.
std::string fromJsonPath(std::string_view path);

}  // namespace probe
