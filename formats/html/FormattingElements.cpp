#include "formats/html/FormattingElements.h"

#include <functional>

namespace intake::html {

namespace {

constexpr int MAX_ALIKE = 3;

/// The same for the same attributes, in whatever order they stand.
size_t hashOfAttributes(const Node& node) {
    const std::hash<std::string_view> hash;
    size_t sum = 0;
    for (const Attribute* each = node.attributes; each != nullptr; each = each->next) {
        sum += hash(each->name) * 31 + hash(each->value) + 1;
    }
    return sum;
}

bool areAlike(const Node& one, const Node& other) {
    size_t surplus = 0;
    for (const Attribute* each = other.attributes; each != nullptr; each = each->next) {
        ++surplus;
    }
    for (const Attribute* each = one.attributes; each != nullptr; each = each->next, --surplus) {
        const std::string_view* const value = other.attribute(each->name);
        if (value == nullptr || *value != each->value) {
            return false;
        }
    }
    return surplus == 0;
}

}  // namespace

void FormattingElements::push(Node* node) {
    int alike = 0;
    size_t earliest = NOWHERE;
    const size_t hash = hashOfAttributes(*node);
    for (size_t place = size(); place > 0 && !isMarker(place - 1); --place) {
        const Entry& entry = entries_[place - 1];
        if (entry.node->tag == node->tag && entry.hash == hash && areAlike(*entry.node, *node)) {
            ++alike;
            earliest = place - 1;
        }
    }
    if (alike >= MAX_ALIKE) {
        remove(at(earliest));
    }
    insert(size(), node);
}

void FormattingElements::clearToMarker() {
    bool isFound = false;
    while (!isFound && !isEmpty()) {
        isFound = isMarker(size() - 1);
        if (!isFound) {
            entries_.back().node->isFormatting = false;
        }
        entries_.pop_back();
    }
}

void FormattingElements::insert(size_t place, Node* node) {
    entries_.insert(entries_.begin() + static_cast<ptrdiff_t>(place),
                    {node, hashOfAttributes(*node)});
    node->isFormatting = true;
}

/// A copy of the one that it replaces, so the hash stays.
void FormattingElements::replace(size_t place, Node* copy) {
    at(place)->isFormatting = false;
    entries_[place].node = copy;
    copy->isFormatting = true;
}

void FormattingElements::remove(Node* node) {
    const size_t place = find(node);
    if (place != NOWHERE) {
        entries_.erase(entries_.begin() + static_cast<ptrdiff_t>(place));
        node->isFormatting = false;
    }
}

/// From the back: a hostile page can leave any number of markers behind.
size_t FormattingElements::find(const Node* node) const {
    if (!node->isFormatting) {
        return NOWHERE;
    }
    size_t place = size() - 1;
    while (at(place) != node) {
        --place;
    }
    return place;
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
