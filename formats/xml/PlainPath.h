#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace intake {

/// What a step of a path finds by name.
struct NameTest {
    bool anyName = false;
    bool anySpace = false;
    std::string name;
    std::string uri;  // empty outside of all namespaces

    bool matches(std::string_view itsName, std::string_view itsUri) const {
        return (anyName || itsName == name) && (anySpace || itsUri == uri);
    }
};

enum class PathComparison { NONE, EQUAL, UNEQUAL, LESS, AT_MOST, GREATER, AT_LEAST };

/// A condition of a step.
struct PathPredicate {
    enum class Subject { POSITION, ATTRIBUTE, CHILD };

    Subject subject = Subject::POSITION;
    NameTest test;
    PathComparison comparison = PathComparison::NONE;  // none: that there is one
    bool isNumber = false;
    std::string text;    // to compare with
    double number = 0;   // the same
    size_t counter = 0;  // which of the path's counters it uses, when it is a position

    /// Whether the element's content must be known.
    bool isLate() const { return subject == Subject::CHILD; }

    bool holdsFor(std::string_view value) const;
    bool holdsFor(double value) const;
};

struct PlainStep {
    enum class Finds { ELEMENTS, ATTRIBUTES, TEXTS };

    Finds finds = Finds::ELEMENTS;
    bool isDeep = false;  // looks into all descendants
    NameTest test;
    std::vector<PathPredicate> predicates;
    size_t early = 0;  // so many predicates can be judged when the element begins
};

/// A path that leads downwards only, so that whatever it finds can be told while a document is read
/// from its start to its end.
struct PlainPath {
    static constexpr size_t MOST_STEPS = 31;  // a bit each, and one to spare for shifting

    std::vector<PlainStep> steps;  // none: the node itself
    size_t counters = 0;           // for positions

    bool isSelf() const { return steps.empty(); }
    bool isLate() const { return !isSelf() && steps.back().early < steps.back().predicates.size(); }
    bool looksAtAttributes() const;
    bool isDeep() const;
};

/// Where a path begins: at the document or at a row.
enum class PathStart { DOCUMENT, ROW };

/// The URI of a prefix; nothing when it is not declared.
using PrefixLookup = std::function<std::optional<std::string>(std::string_view)>;

/// Nothing for any expression that is no plain path, whether it is right or wrong.
std::optional<PlainPath> parsePlainPath(std::string_view expression, PathStart start,
                                        const PrefixLookup& uriOf);

}  // namespace intake
