#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "workbench/probe/explore/Outline.h"
#include "workbench/probe/explore/PathPreview.h"
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

/// The page of the entries below a node that is wished for.
Outline outlineOf(const PathTree& tree, PathTree::Id from, const OutlineWish& wish,
                  const std::function<OutlineEntry(PathTree::Id)>& entryFor);

/// Whether the first records at the place are wished for.
bool wantsPreview(const OutlineWish& wish);

/// The names on a page that stand directly in the records and have nothing below them.
std::vector<std::string> columnsOf(const Outline& outline);

/// What was read of the records of a node. Each has a place where all of them stand in one array.
Preview previewOf(PathPreview& read, const PathTree& tree, PathTree::Id node,
                  const std::function<std::string(std::size_t)>& placeOfRow);

}  // namespace probe
