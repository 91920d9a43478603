#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/probe/explore/Outline.h"

namespace probe {

/// All paths of names that occur in a document, with how many values each selects: what is alike in
/// a million records is there once. Takes no more than the memory that it is given; names for which
/// there is no room are counted and left out.
class PathTree {
public:
    using Id = uint32_t;
    static constexpr Id ROOT = 0;
    static constexpr Id NONE = static_cast<Id>(-1);

    enum class Kind : uint8_t { Null, Text, Number, Switch, Array, Object };

    struct Node {
        std::string name;
        Id parent;
        std::vector<Id> children;
        std::size_t records = 0;
        uint8_t kinds = 0;  // a bit for each that occurs
        std::string value;  // the first
        std::string match;  // the first value that holds the text that is looked for
        std::size_t leftOut = 0;
    };

    /// `find`: the text that values are searched for; empty for none.
    PathTree(std::size_t mostBytes, std::string find);

    /// The child of that name, made when there is none; NONE when there is no room. `hint` is where
    /// among the children it probably stands, and is moved on.
    Id child(Id parent, std::string_view name, std::size_t& hint);

    /// Counts one more value that the path selects.
    void count(Id node, Kind kind, std::string_view value = {});

    /// Whether note would look at a text.
    bool wantsText(Id node) const {
        return node != NONE && (nodes_[node].value.empty() || !find_.empty());
    }

    /// Notes the text of what was counted as something else: that of an element.
    void note(Id node, std::string_view value);

    const Node& at(Id node) const { return nodes_[node]; }
    Node& at(Id node) { return nodes_[node]; }

    /// The child of that name, or NONE.
    Id find(Id parent, std::string_view name) const;

    /// Whether the name or a value of a node holds the text that is looked for.
    bool matches(Id node) const;

    /// The nodes below one that an outline shows: by whole levels, as many as fit, or all that hold
    /// the text that is looked for. In the order of the document.
    std::vector<Id> shown(Id from, const OutlineWish& wish, std::size_t& leftOut) const;

    /// How many names met no room, and are not in the tree.
    std::size_t dropped() const { return dropped_; }

    std::size_t depthBelow(Id node, Id ancestor) const;

private:
    std::size_t bytes_ = 0;
    std::size_t dropped_ = 0;
    const std::size_t mostBytes_;
    const std::string find_;  // in lower case
    std::vector<Node> nodes_;
    std::unordered_map<std::string, Id> byName_;  // of nodes with many children
};

/// In a word or two: "objects", "texts and numbers".
std::string wordsForKinds(uint8_t kinds);

/// The start of a text, in one line.
std::string startOf(std::string_view text);

}  // namespace probe
