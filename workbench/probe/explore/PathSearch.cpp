#include "workbench/probe/explore/PathSearch.h"

#include <algorithm>

namespace probe {

/// Only one path is open at a time, so that its length tells a node from the others.
PathSink::Id PathSearch::child(Id parent, std::string_view name, std::size_t& /*hint*/) {
    open_.resize(std::max<std::size_t>(open_.size(), parent + 1));
    open_[parent].assign(name);
    const Id made = parent + 1;
    if (wanted_.isIn(name)) keep(made);
    return made;
}

void PathSearch::count(Id node, Kind /*kind*/, std::string_view value) {
    if (node != ROOT && !value.empty() && wanted_.isIn(value)) keep(node);
}

bool PathSearch::isInPlace(Id node) const {
    return node > place_.size() && std::equal(place_.begin(), place_.end(), open_.begin());
}

void PathSearch::keep(Id node) {
    if (!isInPlace(node)) return;
    Id at = PathTree::ROOT;
    for (std::size_t i = 0; i < node && at != PathTree::NONE; ++i) {
        std::size_t hint = 0;
        at = found_.child(at, open_[i], hint);
    }
}

}  // namespace probe
