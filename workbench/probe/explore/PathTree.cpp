#include "workbench/probe/explore/PathTree.h"

#include <algorithm>
#include <array>

#include "formats/text/utf8.h"

namespace probe {

namespace {

constexpr std::size_t bytesOfNode = 320;  // with all that belongs to it
constexpr std::size_t leastNodes = 1000;
constexpr std::size_t longestValue = 60;  // in bytes
constexpr std::size_t manyChildren = 16;

// In the order of PathTree::Kind.
constexpr std::array<const char*, 6> kindWords{"nulls",    "texts",  "numbers",
                                               "switches", "arrays", "objects"};

std::string keyOf(PathTree::Id parent, std::string_view name) {
    return std::to_string(parent) + '/' + std::string(name);
}

}  // namespace

std::string startOf(std::string_view text) {
    std::string line;
    while (!text.empty() && line.size() < longestValue) {
        const auto next = intake::utf8CharacterAt(text);
        const bool isShown = next.isValid && next.code >= ' ' && next.code != 0x7F;
        line += isShown ? text.substr(0, next.length) : std::string_view(" ");
        text.remove_prefix(next.length);
    }
    return text.empty() ? line : line + "…";
}

std::string wordsForKinds(uint8_t kinds) {
    std::string words;
    for (std::size_t kind = 0; kind < kindWords.size(); ++kind) {
        if ((kinds >> kind & 1) != 0)
            words += (words.empty() ? "" : ", ") + std::string(kindWords[kind]);
    }
    return words.empty() ? "empty" : words;
}

PathTree::PathTree(std::size_t mostBytes, std::string_view find)
    : mostBytes_(std::max(mostBytes, leastNodes * bytesOfNode)),
      wanted_(find),
      nodes_{Node{"", NONE, {}}} {}

PathTree::Id PathTree::find(Id parent, std::string_view name) const {
    const std::vector<Id>& children = nodes_[parent].children;
    if (children.size() > manyChildren) {
        const auto known = byName_.find(keyOf(parent, name));
        return known == byName_.end() ? NONE : known->second;
    }
    const auto found = std::find_if(children.begin(), children.end(),
                                    [&](Id each) { return nodes_[each].name == name; });
    return found == children.end() ? NONE : *found;
}

PathTree::Id PathTree::child(Id parent, std::string_view name, std::size_t& hint) {
    if (parent == NONE) return NONE;
    const std::vector<Id>& children = nodes_[parent].children;
    const bool isHint = hint < children.size() && nodes_[children[hint]].name == name;
    const Id known = isHint ? children[hint++] : find(parent, name);
    if (known != NONE) {
        nodes_[known].isMet = true;
        return known;
    }
    return nodes_[parent].grows ? made(parent, name, hint) : NONE;
}

PathTree::Id PathTree::made(Id parent, std::string_view name, std::size_t& hint) {
    const std::size_t needed = bytesOfNode + name.size();
    if (bytes_ + needed > mostBytes_) {
        ++nodes_[parent].leftOut;
        ++dropped_;
        return NONE;
    }
    bytes_ += needed;
    const Id node = static_cast<Id>(nodes_.size());
    nodes_.push_back(Node{std::string(name), parent, {}});
    std::vector<Id>& siblings = nodes_[parent].children;
    siblings.push_back(node);
    hint = siblings.size();
    if (siblings.size() == manyChildren + 1) {
        for (const Id each : siblings)
            byName_.emplace(keyOf(parent, nodes_[each].name), each);
    } else if (siblings.size() > manyChildren) {
        byName_.emplace(keyOf(parent, name), node);
    }
    return node;
}

void PathTree::count(Id node, Kind kind, std::string_view value) {
    if (node == NONE) return;
    Node& counted = nodes_[node];
    ++counted.records;
    counted.kinds = static_cast<uint8_t>(counted.kinds | 1U << static_cast<unsigned>(kind));
    if (!value.empty()) note(node, value);
}

void PathTree::note(Id node, std::string_view value) {
    if (node == NONE) return;
    Node& noted = nodes_[node];
    if (noted.value.empty()) noted.value = startOf(value);
    const bool isSought = !wanted_.isNone() && noted.match.empty();
    if (isSought && wanted_.isIn(value)) noted.match = startOf(value);
}

PathTree::Id PathTree::keep(const std::vector<std::string>& path) {
    Id node = ROOT;
    for (const std::string& name : path) {
        std::size_t hint = 0;
        node = child(node, name, hint);
        if (node != NONE) nodes_[node].isMet = false;
    }
    return node;
}

bool PathTree::hasMet(const std::vector<std::string>& path) const {
    Id node = ROOT;
    for (const std::string& name : path) {
        node = find(node, name);
        if (node == NONE || !nodes_[node].isMet) return false;
    }
    return true;
}

void PathTree::growOnlyBelow(Id node) {
    for (Node& each : nodes_)
        each.grows = false;
    if (node != NONE) nodes_[node].grows = true;
}

bool PathTree::matches(Id node) const {
    return !nodes_[node].match.empty() || wanted_.isIn(nodes_[node].name);
}

std::size_t PathTree::depthBelow(Id node, Id ancestor) const {
    std::size_t depth = 0;
    for (Id each = nodes_[node].parent; each != ancestor; each = nodes_[each].parent)
        ++depth;
    return depth;
}

std::vector<PathTree::Id> PathTree::shown(Id from, const OutlineWish& wish) const {
    std::vector<Id> all;  // in the order of the document
    std::vector<Id> open(nodes_[from].children.rbegin(), nodes_[from].children.rend());
    std::vector<std::size_t> atDepth;
    while (!open.empty()) {
        const Id node = open.back();
        open.pop_back();
        open.insert(open.end(), nodes_[node].children.rbegin(), nodes_[node].children.rend());
        if (!wanted_.isNone() && !matches(node)) continue;
        all.push_back(node);
        const std::size_t depth = depthBelow(node, from);
        atDepth.resize(std::max(atDepth.size(), depth + 1));
        ++atDepth[depth];
    }
    if (wanted_.isNone()) {
        std::size_t levels = 0;
        for (std::size_t shown = 0; levels < atDepth.size(); ++levels) {
            shown += atDepth[levels];
            if (levels > 0 && shown > wish.most) break;
        }
        const auto end = std::remove_if(all.begin(), all.end(),
                                        [&](Id node) { return depthBelow(node, from) >= levels; });
        all.erase(end, all.end());
    }
    return all;
}

}  // namespace probe
