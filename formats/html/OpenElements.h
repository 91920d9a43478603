#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "formats/html/Node.h"

namespace intake::html {

/// The elements that a search for one in scope does not look beyond.
enum class Scope { DEFAULT, LIST_ITEM, BUTTON, TABLE };

/// Whether an element is of the standard's special category.
bool isSpecial(const Node& node);

/// The standard's stack of open elements. Counts the HTML elements of each tag, so that a search
/// for one that is not open, the common case, looks at nothing.
class OpenElements {
public:
    bool isEmpty() const { return nodes_.empty(); }
    size_t size() const { return nodes_.size(); }
    Node* current() const { return nodes_.back(); }
    Node* at(size_t place) const { return nodes_[place]; }

    void push(Node* node);
    void pop();
    void insert(size_t place, Node* node);
    void remove(Node* node);
    void replace(size_t place, Node* node);

    bool isOpen(Tag tag) const { return counts_[static_cast<size_t>(tag)] > 0; }
    bool contains(const Node* node) const { return node->isOpen; }

    static constexpr size_t NOWHERE = static_cast<size_t>(-1);
    /// The place of an element, or of the last HTML element of a tag; NOWHERE when it is not open.
    size_t find(const Node* node) const;
    size_t findLast(Tag tag) const;

    bool hasInScope(Tag tag, Scope scope = Scope::DEFAULT) const;
    bool hasInScope(const Node* node) const;
    bool hasHeadingInScope() const;

    /// Pops elements until one of that tag has been popped, or just that element.
    void popThrough(Tag tag);
    void popThrough(const Node* node);

private:
    void leave(Node* node);
    int& count(const Node* node) { return counts_[static_cast<size_t>(node->tag)]; }

    std::vector<Node*> nodes_;
    std::array<int, TAG_COUNT> counts_{};
};

}  // namespace intake::html
