#include "formats/html/Node.h"

namespace intake::html {

const std::string_view* Node::attribute(std::string_view name) const {
    for (const Attribute* each = attributes; each != nullptr; each = each->next) {
        if (each->name == name) {
            return &each->value;
        }
    }
    return nullptr;
}

void Node::moveTo(Node* newParent, Node* before) {
    remove();
    parent = newParent;
    next = before;
    previous = before == nullptr ? newParent->lastChild : before->previous;
    (previous == nullptr ? newParent->firstChild : previous->next) = this;
    (next == nullptr ? newParent->lastChild : next->previous) = this;
}

void Node::remove() {
    if (parent == nullptr) {
        return;
    }
    (previous == nullptr ? parent->firstChild : previous->next) = next;
    (next == nullptr ? parent->lastChild : next->previous) = previous;
    parent = previous = next = nullptr;
}

const Node* Node::following(const Node* root) const {
    return firstChild != nullptr ? firstChild : followingOutside(root);
}

const Node* Node::followingOutside(const Node* root) const {
    const Node* node = this;
    while (node != root && node->next == nullptr) {
        node = node->parent;
    }
    return node == root ? nullptr : node->next;
}

}  // namespace intake::html
