#include "formats/xml/PathMatch.h"

#include <string>

#include "formats/xml/xml_text.h"

namespace intake {

namespace {

std::string_view uriOf(const xmlNs* space) {
    return space == nullptr ? std::string_view() : viewOf(space->href);
}

const xmlAttr* findAttribute(const NameTest& test, const xmlAttr* from) {
    for (const xmlAttr* each = from; each != nullptr; each = each->next) {
        if (test.matches(viewOf(each->name), uriOf(each->ns))) {
            return each;
        }
    }
    return nullptr;
}

std::string_view valueOf(const xmlAttr* attribute) {
    return attribute->children == nullptr ? std::string_view()
                                          : viewOf(attribute->children->content);
}

/// An element of a tree.
class TreeElement {
public:
    explicit TreeElement(const xmlNode* element) : element_(element) {}

    std::string_view name() const { return viewOf(element_->name); }
    std::string_view uri() const { return uriOf(element_->ns); }

    template <class Holds>
    bool anyAttribute(const NameTest& test, Holds holds) const {
        const xmlAttr* each = findAttribute(test, element_->properties);
        while (each != nullptr && !holds(valueOf(each))) {
            each = findAttribute(test, each->next);
        }
        return each != nullptr;
    }

private:
    const xmlNode* element_;
};

const xmlNode* nodeBehind(const xmlNode* node, const xmlNode* top, PathMatch& match) {
    while (node != top && node->next == nullptr) {
        node = node->parent;
        match.leave();
    }
    return node == top ? nullptr : node->next;
}

const xmlNode* foundAttribute(const PathMatch& match, const PlainPath& path,
                              const xmlNode* element) {
    return match.findsAttributes() ? reinterpret_cast<const xmlNode*>(
                                         findAttribute(path.steps.back().test, element->properties))
                                   : nullptr;
}

bool isText(const xmlNode* node) {
    return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE;
}

}  // namespace

PathMatch::PathMatch(const PlainPath& path) : path_(path) {
    for (size_t i = 0; i < path.steps.size(); ++i) {
        const PlainStep& step = path.steps[i];
        const Mask bit = Mask{1} << i;
        deepSteps_ |= step.isDeep ? bit : 0;
        attributeSteps_ |= step.finds == PlainStep::Finds::ATTRIBUTES ? bit : 0;
        textSteps_ |= step.finds == PlainStep::Finds::TEXTS ? bit : 0;
    }
    restart();
}

void PathMatch::restart() {
    masks_.assign(1, 1);
    counts_.assign(path_.counters, 0);
}

bool PathMatch::holdsAt(const PathPredicate& predicate, size_t parent) {
    uint32_t& count = counts_[parent * path_.counters + predicate.counter];
    return predicate.holdsFor(static_cast<double>(++count));
}

/// Gives `take` the texts that are an element's value for an expression, as they are, not trimmed,
/// until it wants no more. Whether it wanted all.
template <class Take>
bool PathMatch::forEachText(const xmlNode* element, Take take) {
    for (const xmlNode* node = element->children; node != nullptr;) {
        visit();
        if (isText(node) && !take(viewOf(node->content))) {
            return false;
        }
        if (node->type == XML_ELEMENT_NODE && node->children != nullptr) {
            node = node->children;
            continue;
        }
        while (node != element && node->next == nullptr) {
            node = node->parent;
        }
        node = node == element ? nullptr : node->next;
    }
    return true;
}

/// No further than to the first difference: rows within rows would be gone through again and again.
bool PathMatch::hasText(const xmlNode* element, std::string_view wanted) {
    const bool isStart = forEachText(element, [&wanted](std::string_view text) {
        const bool goesOn = wanted.starts_with(text);
        wanted.remove_prefix(goesOn ? text.size() : 0);
        return goesOn;
    });
    return isStart && wanted.empty();
}

/// Of a number that is compared. Throws std::length_error for one that is too long to be judged
/// here.
std::string PathMatch::shortTextOf(const xmlNode* element) {
    constexpr size_t LONGEST = 1000;
    std::string text;
    forEachText(element, [&text](std::string_view more) {
        if (text.size() + more.size() > LONGEST) {
            throw std::length_error("The number is too long");
        }
        text.append(more);
        return true;
    });
    return text;
}

bool PathMatch::holdsFor(const xmlNode* element, const PathPredicate& predicate) {
    return predicate.isNumber ? predicate.holdsFor(shortTextOf(element))
                              : hasText(element, predicate.text) ==
                                    (predicate.comparison == PathComparison::EQUAL);
}

bool PathMatch::hasChild(const xmlNode* element, const PathPredicate& predicate) {
    for (const xmlNode* child = element->children; child != nullptr; child = child->next) {
        visit();
        if (child->type == XML_ELEMENT_NODE &&
            predicate.test.matches(viewOf(child->name), uriOf(child->ns)) &&
            (predicate.comparison == PathComparison::NONE || holdsFor(child, predicate))) {
            return true;
        }
    }
    return false;
}

bool PathMatch::holdsLate(const xmlNode* element) {
    const PlainStep& step = path_.steps.back();
    const TreeElement facts(element);
    const size_t parent = masks_.size() - 2;
    for (size_t p = step.early; p < step.predicates.size(); ++p) {
        const PathPredicate& predicate = step.predicates[p];
        if (!(predicate.isLate() ? hasChild(element, predicate)
                                 : holds(predicate, facts, parent))) {
            return false;
        }
    }
    return true;
}

const xmlNode* findFirst(PathMatch& match, const PlainPath& path, const xmlNode* row) {
    if (path.isSelf()) {
        return row;
    }
    match.restart();
    if (const xmlNode* const found = foundAttribute(match, path, row)) {
        return found;
    }
    for (const xmlNode* node = row->children; node != nullptr;) {
        match.visit();
        if (isText(node) && match.findsTexts()) {
            return node;
        }
        if (node->type == XML_ELEMENT_NODE) {
            if (match.enter(TreeElement(node)) && match.holdsLate(node)) {
                return node;
            }
            if (const xmlNode* const found = foundAttribute(match, path, node)) {
                return found;
            }
            if (node->children != nullptr && match.mayFindInside()) {
                node = node->children;
                continue;
            }
            match.leave();
        }
        node = nodeBehind(node, row, match);
    }
    return nullptr;
}

}  // namespace intake
