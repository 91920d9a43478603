#pragma once

#include <string>
#include <vector>

#include "formats/json/JsonDocument.h"
#include "workbench/probe/explain/Ladder.h"
#include "workbench/probe/json_path_text.h"

namespace probe {

/// Where a path that selects nothing stops, and why. Borrows the document; plain otherwise.
class JsonStop {
public:
    JsonStop(const intake::JsonDocument& document, std::vector<PathSegment> segments);

    /// The path stops at arrays that are there and have no elements.
    bool isEmptyArray() const;

    /// What is to be told of it.
    Step step() const;

    /// Paths that do select something, the most likely first.
    std::vector<std::string> remedies() const;

private:
    using Node = intake::JsonDocument::Node;

    std::vector<Node> matches() const;
    std::vector<std::string> names() const;
    std::string causeOfMatches(const std::vector<Node>& matches) const;
    std::string parentWords() const;
    std::string mended() const;
    bool selects(const std::string& path) const;

    const intake::JsonDocument& document_;
    std::vector<PathSegment> segments_;
    std::size_t stop_ = 0;  // the step that finds nothing
    std::vector<Node> parents_;
};

/// The names of the members of these nodes, each once, in order of appearance.
std::vector<std::string> memberNames(const intake::JsonDocument& document,
                                     const std::vector<intake::JsonDocument::Node>& nodes);

/// The path with its parts set off from each other: "data / standings".
std::string spacedPath(const std::vector<PathSegment>& segments);

}  // namespace probe
