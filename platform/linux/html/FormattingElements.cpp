#include "platform/linux/html/FormattingElements.h"

#include <algorithm>

namespace intake::html {

namespace {

constexpr int MAX_ALIKE = 3;

size_t attributeCount(const Node& node) {
    size_t count = 0;
    for (const Attribute* each = node.attributes; each != nullptr; each = each->next) {
        ++count;
    }
    return count;
}

bool areAlike(const Node& one, const Node& other) {
    if (one.tag != other.tag || attributeCount(one) != attributeCount(other)) {
        return false;
    }
    for (const Attribute* each = one.attributes; each != nullptr; each = each->next) {
        const std::string_view* const value = other.attribute(each->name);
        if (value == nullptr || *value != each->value) {
            return false;
        }
    }
    return true;
}

}  // namespace

void FormattingElements::push(Node* node) {
    int alike = 0;
    size_t earliest = NOWHERE;
    for (size_t place = size(); place > 0 && !isMarker(place - 1); --place) {
        if (areAlike(*at(place - 1), *node)) {
            ++alike;
            earliest = place - 1;
        }
    }
    if (alike >= MAX_ALIKE) {
        nodes_.erase(nodes_.begin() + static_cast<ptrdiff_t>(earliest));
    }
    nodes_.push_back(node);
}

void FormattingElements::clearToMarker() {
    bool isFound = false;
    while (!isFound && !isEmpty()) {
        isFound = isMarker(size() - 1);
        nodes_.pop_back();
    }
}

void FormattingElements::insert(size_t place, Node* node) {
    nodes_.insert(nodes_.begin() + static_cast<ptrdiff_t>(place), node);
}

void FormattingElements::remove(const Node* node) {
    const size_t place = find(node);
    if (place != NOWHERE) {
        nodes_.erase(nodes_.begin() + static_cast<ptrdiff_t>(place));
    }
}

size_t FormattingElements::find(const Node* node) const {
    const auto found = std::find(nodes_.begin(), nodes_.end(), node);
    return found == nodes_.end() ? NOWHERE : static_cast<size_t>(found - nodes_.begin());
}

Node* FormattingElements::findLast(Tag tag) const {
    for (size_t place = size(); place > 0 && !isMarker(place - 1); --place) {
        if (at(place - 1)->tag == tag) {
            return at(place - 1);
        }
    }
    return nullptr;
}

}  // namespace intake::html
