#include "formats/html/OpenElements.h"

#include <algorithm>

namespace intake::html {

namespace {

/// Of an element that is not HTML's.
bool isForeignBoundary(const Node& node) {
    if (node.space == Namespace::SVG) {
        return isOneOf(node.tag, Tag::FOREIGN_OBJECT, Tag::DESC, Tag::TITLE);
    }
    return isOneOf(node.tag, Tag::MI, Tag::MO, Tag::MN, Tag::MS, Tag::MTEXT, Tag::ANNOTATION_XML);
}

bool isBoundary(const Node& node, Scope scope) {
    if (node.space != Namespace::HTML) {
        return scope != Scope::TABLE && isForeignBoundary(node);
    }
    switch (scope) {
        case Scope::TABLE:
            return isOneOf(node.tag, Tag::HTML, Tag::TABLE, Tag::TEMPLATE);
        case Scope::LIST_ITEM:
            return has(node.tag, SCOPE) || isOneOf(node.tag, Tag::OL, Tag::UL);
        case Scope::BUTTON:
            return has(node.tag, SCOPE) || node.tag == Tag::BUTTON;
        default:
            return has(node.tag, SCOPE);
    }
}

/// Whether the innermost node that `matches`, if any, lies within the scope.
template <class Matches>
bool isInScope(const std::vector<Node*>& nodes, Scope scope, Matches matches) {
    for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) {
        if (matches(**node)) {
            return true;
        }
        if (isBoundary(**node, scope)) {
            return false;
        }
    }
    return false;
}

}  // namespace

bool isSpecial(const Node& node) {
    return node.space == Namespace::HTML ? has(node.tag, SPECIAL) : isForeignBoundary(node);
}

void OpenElements::push(Node* node) {
    insert(nodes_.size(), node);
}

void OpenElements::insert(size_t place, Node* node) {
    nodes_.insert(nodes_.begin() + static_cast<ptrdiff_t>(place), node);
    count(node) += node->space == Namespace::HTML ? 1 : 0;
    node->isOpen = true;
}

void OpenElements::pop() {
    leave(nodes_.back());
    nodes_.pop_back();
}

void OpenElements::leave(Node* node) {
    count(node) -= node->space == Namespace::HTML ? 1 : 0;
    node->isOpen = false;
}

void OpenElements::remove(Node* node) {
    const size_t place = find(node);
    if (place != NOWHERE) {
        leave(node);
        nodes_.erase(nodes_.begin() + static_cast<ptrdiff_t>(place));
    }
}

void OpenElements::replace(size_t place, Node* node) {
    remove(nodes_[place]);
    insert(place, node);
}

size_t OpenElements::find(const Node* node) const {
    if (!node->isOpen) {
        return NOWHERE;
    }
    const auto found = std::find(nodes_.rbegin(), nodes_.rend(), node);
    return static_cast<size_t>(nodes_.rend() - found) - 1;
}

size_t OpenElements::findLast(Tag tag) const {
    if (!isOpen(tag)) {
        return NOWHERE;
    }
    const auto found = std::find_if(nodes_.rbegin(), nodes_.rend(),
                                    [tag](const Node* node) { return node->isHtml(tag); });
    return static_cast<size_t>(nodes_.rend() - found) - 1;
}

bool OpenElements::hasInScope(Tag tag, Scope scope) const {
    return isOpen(tag) &&
           isInScope(nodes_, scope, [tag](const Node& node) { return node.isHtml(tag); });
}

bool OpenElements::hasInScope(const Node* wanted) const {
    return isInScope(nodes_, Scope::DEFAULT,
                     [wanted](const Node& node) { return &node == wanted; });
}

bool OpenElements::hasHeadingInScope() const {
    return isInScope(nodes_, Scope::DEFAULT, [](const Node& node) {
        return node.space == Namespace::HTML && has(node.tag, HEADING);
    });
}

void OpenElements::popThrough(Tag tag) {
    bool found = false;
    while (!found && !nodes_.empty()) {
        found = current()->isHtml(tag);
        pop();
    }
}

void OpenElements::popThrough(const Node* node) {
    bool found = false;
    while (!found && !nodes_.empty()) {
        found = current() == node;
        pop();
    }
}

}  // namespace intake::html
