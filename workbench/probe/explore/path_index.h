#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "workbench/probe/explore/Outline.h"
#include "workbench/probe/explore/PathTree.h"

namespace probe {

/// Tells a sink of all paths of a document. False when it has to be called again, with a new one.
using PathReader = std::function<bool(PathSink&)>;

/// The paths of a document that a wish is about, in at most a quarter of the source's size. Where
/// that is too little for all, it is read again for what is wanted alone. `place` is the wish's, by
/// its names.
std::unique_ptr<PathTree> pathIndex(std::size_t sourceBytes, const OutlineWish& wish,
                                    const std::vector<std::string>& place, const PathReader& read);

/// The node at a place. Throws LookFailure when none is there, or nothing below it.
PathTree::Id placeIn(const PathTree& tree, const OutlineWish& wish,
                     const std::vector<std::string>& place);

}  // namespace probe
