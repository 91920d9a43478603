#pragma once

#include <libxml/tree.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "formats/xml/PlainPath.h"

namespace intake {

/// Follows a plain path through a document, element by element, from its start to its end. Looking
/// into rows that are complete throws std::length_error when that cannot be done in reasonable
/// work, as rows within rows are gone through for each of them. Belongs to one thread.
class PathMatch {
public:
    /// `path` outlives this object.
    explicit PathMatch(const PlainPath& path);

    /// Begins at the node that the path begins at.
    void restart();

    /// Enters a child of the element entered last; true when the path may find it, which
    /// `holdsLate` decides when the path is late. An `Element` has a name() and a uri() and says
    /// of which values of an attribute a condition holds: anyAttribute(test, holds).
    template <class Element>
    bool enter(const Element& element);

    void leave() {
        masks_.pop_back();
        counts_.resize(masks_.size() * path_.counters);
    }

    /// Judges the predicates that need the content of the element entered last, which is complete.
    bool holdsLate(const xmlNode* element);

    /// Whether the path goes on to attributes or texts of the element entered last.
    bool findsAttributes() const { return (masks_.back() & attributeSteps_) != 0; }
    bool findsTexts() const { return (masks_.back() & textSteps_) != 0; }

    /// Whether the path may find anything inside of the element entered last.
    bool mayFindInside() const { return masks_.back() != 0; }

    /// How many elements a step came upon by its name, whatever its predicates said; of the step
    /// that came upon most.
    uint64_t mostNamed() const { return *std::max_element(named_.begin(), named_.end()); }

    /// Counts a node that was looked at in a complete row.
    void visit() {
        constexpr uint64_t MOST_VISITS = 200'000'000;
        if (++visits_ == MOST_VISITS) {
            throw std::length_error("The rows are gone through too often");
        }
    }

private:
    using Mask = uint32_t;

    template <class Element>
    bool holds(const PathPredicate& predicate, const Element& element, size_t parent);
    bool holdsAt(const PathPredicate& predicate, size_t parent);
    bool hasChild(const xmlNode* element, const PathPredicate& predicate);
    bool holdsFor(const xmlNode* element, const PathPredicate& predicate);
    bool hasText(const xmlNode* element, std::string_view wanted);
    std::string shortTextOf(const xmlNode* element);
    template <class Take>
    bool forEachText(const xmlNode* element, Take take);

    const PlainPath& path_;
    Mask deepSteps_ = 0;
    Mask attributeSteps_ = 0;
    Mask textSteps_ = 0;

    // Of each open element: the steps that go on from it, and how often its children have met the
    // path's counters.
    std::vector<Mask> masks_;
    std::vector<uint32_t> counts_;
    std::array<uint64_t, PlainPath::MOST_STEPS> named_{};  // by each step
    uint64_t visits_ = 0;
};

template <class Element>
bool PathMatch::enter(const Element& element) {
    const Mask outer = masks_.back();
    Mask inner = outer & deepSteps_;
    bool isFound = false;
    for (size_t i = 0; outer >> i != 0; ++i) {
        if ((outer >> i & 1) == 0) {
            continue;
        }
        const PlainStep& step = path_.steps[i];
        bool matches = step.finds == PlainStep::Finds::ELEMENTS &&
                       step.test.matches(element.name(), element.uri());
        named_[i] += matches ? 1 : 0;
        for (size_t p = 0; matches && p < step.early; ++p) {
            matches = holds(step.predicates[p], element, masks_.size() - 1);
        }
        if (matches) {
            isFound = isFound || i + 1 == path_.steps.size();
            inner |= i + 1 < path_.steps.size() ? Mask{1} << (i + 1) : 0;
        }
    }
    masks_.push_back(inner);
    counts_.resize(masks_.size() * path_.counters);
    return isFound;
}

template <class Element>
bool PathMatch::holds(const PathPredicate& predicate, const Element& element, size_t parent) {
    return predicate.subject == PathPredicate::Subject::POSITION
               ? holdsAt(predicate, parent)
               : element.anyAttribute(predicate.test, [&predicate](std::string_view value) {
                     return predicate.holdsFor(value);
                 });
}

/// The first node in the document's order that a plain path finds from a row whose tree is
/// complete; null when there is none.
const xmlNode* findFirst(PathMatch& match, const PlainPath& path, const xmlNode* row);

}  // namespace intake
