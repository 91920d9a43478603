#pragma once

#include <string>
#include <vector>

#include "workbench/probe/explore/PathSink.h"
#include "workbench/probe/explore/PathTree.h"
#include "workbench/probe/explore/Wanted.h"

namespace probe {

/// Puts into a tree only the paths whose last name, or a value of which, has a text in it. Takes no
/// memory for the others. Borrows the tree.
class PathSearch final : public PathSink {
public:
    /// Looks below a place, which the tree has.
    PathSearch(PathTree& found, std::string_view wanted, std::vector<std::string> place)
        : found_(found), wanted_(wanted), place_(std::move(place)) {}

    Id child(Id parent, std::string_view name, std::size_t& hint) override;
    void count(Id node, Kind kind, std::string_view value) override;
    bool wantsText(Id /*node*/) const override { return true; }

private:
    bool isInPlace(Id node) const;
    void keep(Id node);

    PathTree& found_;
    const Wanted wanted_;
    const std::vector<std::string> place_;
    std::vector<std::string> open_;  // the names from the root to where the document is read
};

}  // namespace probe
