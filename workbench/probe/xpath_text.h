#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace probe {

/// One step of a location path, as it is written.
struct XPathStep {
    std::string axis;        // with its "::" or "@"; empty where none is written
    std::string name;        // the test: "item", "p:item", "*", "text()"
    std::string predicates;  // "[@id='7'][1]"
    bool anyDepth = false;   // it stands behind "//"

    std::string text() const { return axis + name + predicates; }
    bool isAttribute() const { return axis == "@" || axis == "attribute::"; }
    /// Whether the test is a name, rather than a star or a type of nodes.
    bool isName() const;
    std::string localName() const;
    std::string prefix() const;
};

/// An expression that is one location path. Other expressions have no steps.
struct LocationPath {
    bool isAbsolute = false;
    std::vector<XPathStep> steps;

    /// The first `count` steps as an expression.
    std::string text(std::size_t count) const;
    std::string text() const { return text(steps.size()); }
};

LocationPath locationPath(std::string_view expression);

/// What "Namespaces" declares a prefix by: xmlns:d="urn:feed".
std::string declarationOf(std::string_view prefix, std::string_view address);

}  // namespace probe
