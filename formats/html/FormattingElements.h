#pragma once

#include <cstddef>
#include <vector>

#include "formats/html/Node.h"

namespace intake::html {

/// The standard's list of active formatting elements, whose entries come back in every block that
/// follows until they are closed. A marker bounds what is inside a cell, for one.
class FormattingElements {
public:
    static constexpr size_t NOWHERE = static_cast<size_t>(-1);

    size_t size() const { return entries_.size(); }
    bool isEmpty() const { return entries_.empty(); }
    bool isMarker(size_t place) const { return at(place) == nullptr; }
    Node* at(size_t place) const { return entries_[place].node; }

    /// Drops the earliest of three like it, behind the last marker.
    void push(Node* node);
    void pushMarker() { entries_.push_back({nullptr, 0}); }
    void clearToMarker();

    void insert(size_t place, Node* node);
    void replace(size_t place, Node* copy);
    void remove(Node* node);

    size_t find(const Node* node) const;

    /// The last element of a tag behind the last marker; null when there is none.
    Node* findLast(Tag tag) const;

private:
    struct Entry {
        Node* node;   // null for a marker
        size_t hash;  // of its attributes, which are compared with those of many others
    };

    std::vector<Entry> entries_;
};

}  // namespace intake::html
