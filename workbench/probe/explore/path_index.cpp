#include "workbench/probe/explore/path_index.h"

#include "workbench/probe/LookFailure.h"
#include "workbench/probe/explore/OutlinePage.h"
#include "workbench/probe/explore/PathSearch.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

using Tree = std::unique_ptr<PathTree>;

constexpr std::size_t sourceToIndex = 4;

/// What is below a place.
Tree treeBelow(Tree tree, const std::vector<std::string>& place, const PathReader& read) {
    tree->growOnlyBelow(tree->keep(place));
    read(*tree);
    return tree;
}

/// What has the text that is looked for, found by one reading and counted by another.
Tree treeOfFound(Tree tree, const std::string& wanted, const std::vector<std::string>& place,
                 const PathReader& read) {
    tree->keep(place);
    PathSearch search(*tree, wanted, place);
    read(search);
    tree->growOnlyBelow(PathTree::NONE);
    read(*tree);
    return tree;
}

}  // namespace

Tree pathIndex(std::size_t sourceBytes, const OutlineWish& wish,
               const std::vector<std::string>& place, const PathReader& read) {
    const auto empty = [&] {
        return std::make_unique<PathTree>(sourceBytes / sourceToIndex, wish.find);
    };
    Tree tree = empty();
    if (!read(*tree)) {
        tree = empty();
        read(*tree);
    }
    if (tree->dropped() > 0 && !place.empty()) {
        Tree below = treeBelow(empty(), place, read);
        if (below->hasMet(place)) tree = std::move(below);
    }
    if (tree->dropped() > 0 && !wish.find.empty())
        tree = treeOfFound(empty(), wish.find, place, read);
    return tree;
}

PathTree::Id placeIn(const PathTree& tree, const OutlineWish& wish,
                     const std::vector<std::string>& place) {
    PathTree::Id node = PathTree::ROOT;
    for (const std::string& name : place) {
        const PathTree::Id below = tree.find(node, name);
        if (below == PathTree::NONE) {
            std::vector<std::string> names;
            for (const PathTree::Id each : tree.at(node).children)
                names.push_back(tree.at(each).name);
            throw LookFailure("has nothing at " + quoted(wish.place) + ": there is no " +
                              quoted(name) + ", but " + listOf(names, tree.at(node).leftOut));
        }
        node = below;
    }
    const bool isLeaf = tree.at(node).children.empty() && tree.at(node).leftOut == 0;
    if (!place.empty() && isLeaf && wish.find.empty())
        throw LookFailure("has nothing below " + quoted(wish.place) +
                          ": what stands there has no names in it");
    return node;
}

Outline outlineOf(const PathTree& tree, PathTree::Id from, const OutlineWish& wish,
                  const std::function<OutlineEntry(PathTree::Id)>& entryFor) {
    OutlinePage page(wish);
    for (const PathTree::Id node : tree.shown(from, wish)) {
        if (!page.wantsNext()) {
            page.pass(1);
            continue;
        }
        OutlineEntry entry = entryFor(node);
        // What is found stands apart from what it stands in.
        entry.depth = wish.find.empty() ? tree.depthBelow(node, from) : 0;
        page.add(std::move(entry));
    }
    Outline outline = tree.dropped() == 0 ? page.take() : page.takeUncounted();
    outline.leftOut += tree.at(from).leftOut;
    outline.notKept = tree.dropped();
    return outline;
}

bool wantsPreview(const OutlineWish& wish) {
    return wish.isWhole && !wish.place.empty() && wish.find.empty();
}

std::vector<std::string> columnsOf(const Outline& outline) {
    std::vector<std::string> columns;
    for (const OutlineEntry& entry : outline.entries) {
        if (entry.depth == 0 && entry.place.empty()) columns.push_back(entry.name);
    }
    return columns;
}

Preview previewOf(PathPreview& read, const PathTree& tree, PathTree::Id node,
                  const std::function<std::string(std::size_t)>& placeOfRow) {
    Preview preview = read.take();
    preview.leftOut = tree.at(node).records - preview.rows.size();
    bool isOneArray = true;
    for (PathTree::Id each = tree.at(node).parent; each != PathTree::NONE;
         each = tree.at(each).parent)
        isOneArray = isOneArray && tree.at(each).records <= 1;
    for (std::size_t row = 0; isOneArray && row < preview.rows.size(); ++row)
        preview.places.push_back(placeOfRow(row));
    return preview;
}

}  // namespace probe
