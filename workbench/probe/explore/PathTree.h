#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/probe/explore/Outline.h"
#include "workbench/probe/explore/PathSink.h"
#include "workbench/probe/explore/Wanted.h"

namespace probe {

/// All paths of names that occur in a document, with how many values each selects: what is alike in
/// a million records is there once. Takes no more than the memory that it is given; names for which
/// there is no room are counted and left out.
class PathTree final : public PathSink {
public:
    struct Node {
        std::string name;
        Id parent;
        std::vector<Id> children;
        std::size_t records = 0;
        uint8_t kinds = 0;    // a bit for each that occurs
        std::string value{};  // the first
        std::string match{};  // the first value that holds the text that is looked for
        std::size_t leftOut = 0;
        bool isMet = true;  // in the document, rather than only wished for
        bool grows = true;  // takes children that it does not have yet
    };

    /// `find`: the text that values are searched for; empty for none.
    PathTree(std::size_t mostBytes, std::string_view find);

    /// Makes the child where there is none and there is room.
    Id child(Id parent, std::string_view name, std::size_t& hint) override;

    void count(Id node, Kind kind, std::string_view value) override;

    bool wantsText(Id node) const override {
        return node != NONE && (nodes_[node].value.empty() || !wanted_.isNone());
    }

    /// Makes a path that is not yet met in the document.
    Id keep(const std::vector<std::string>& path);

    /// Whether the document has a path that is in the tree.
    bool hasMet(const std::vector<std::string>& path) const;

    /// From now on only a node takes new children, and those do; with NONE, none at all.
    void growOnlyBelow(Id node);

    const Node& at(Id node) const { return nodes_[node]; }
    Node& at(Id node) { return nodes_[node]; }

    /// The child of that name, or NONE.
    Id find(Id parent, std::string_view name) const;

    /// Whether the name or a value of a node holds the text that is looked for.
    bool matches(Id node) const;

    /// The nodes below one that an outline lists: by whole levels, as many as fit on a page, or all
    /// that hold the text that is looked for. In the order of the document.
    std::vector<Id> shown(Id from, const OutlineWish& wish) const;

    /// How many names met no room, and are not in the tree.
    std::size_t dropped() const { return dropped_; }

    std::size_t depthBelow(Id node, Id ancestor) const;

private:
    Id made(Id parent, std::string_view name, std::size_t& hint);
    void note(Id node, std::string_view value);

    std::size_t bytes_ = 0;
    std::size_t dropped_ = 0;
    const std::size_t mostBytes_;
    const Wanted wanted_;
    std::vector<Node> nodes_;
    std::unordered_map<std::string, Id> byName_;  // of nodes with many children
};

/// In a word or two: "objects", "texts and numbers".
std::string wordsForKinds(uint8_t kinds);

/// The start of a text, in one line.
std::string startOf(std::string_view text);

}  // namespace probe
