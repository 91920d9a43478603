#pragma once

#include <cstddef>
#include <vector>

#include "platform/linux/html/Node.h"

namespace intake::html {

/// The standard's list of active formatting elements, whose entries come back in every block that
/// follows until they are closed. A marker bounds what is inside a cell, for one.
class FormattingElements {
public:
    static constexpr size_t NOWHERE = static_cast<size_t>(-1);

    size_t size() const { return nodes_.size(); }
    bool isEmpty() const { return nodes_.empty(); }
    bool isMarker(size_t place) const { return nodes_[place] == nullptr; }
    Node* at(size_t place) const { return nodes_[place]; }

    /// Drops the earliest of three like it, behind the last marker.
    void push(Node* node);
    void pushMarker() { nodes_.push_back(nullptr); }
    void clearToMarker();

    void insert(size_t place, Node* node);
    void replace(size_t place, Node* node) { nodes_[place] = node; }
    void remove(const Node* node);

    size_t find(const Node* node) const;

    /// The last element of a tag behind the last marker; null when there is none.
    Node* findLast(Tag tag) const;

private:
    std::vector<Node*> nodes_;
};

}  // namespace intake::html
