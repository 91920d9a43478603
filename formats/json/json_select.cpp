#include "formats/json/json_select.h"

namespace intake {

namespace {

using Node = JsonDocument::Node;
using Nodes = std::vector<Node>;

bool filterHolds(const JsonDocument& document, Node node, const PathStep& step) {
    if (step.kind != PathStep::Kind::FILTER) {
        return true;
    }
    const Node member = document.find(node, step.field);
    return member != JsonDocument::NONE && document.asString(member) == step.value;
}

/// The element at the step's index passes; an index past the end leaves the array out.
void passElementAt(const JsonDocument& document, Node array, int32_t index, Nodes& passed) {
    Node element = JsonDocument::firstChild(array);
    for (int32_t i = 0; element != document.behind(array); ++i) {
        if (i == index) {
            passed.push_back(element);
            return;
        }
        element = document.behind(element);
    }
}

/// A node that has the step's name passes as it is; an array passes its elements.
void passMatch(const JsonDocument& document, Node match, const PathStep& step, Nodes& passed) {
    if (document.type(match) != JsonDocument::Type::ARRAY) {
        if (filterHolds(document, match, step)) {
            passed.push_back(match);
        }
        return;
    }
    if (step.kind == PathStep::Kind::INDEX) {
        passElementAt(document, match, step.index, passed);
        return;
    }
    const Node end = document.behind(match);
    for (Node element = JsonDocument::firstChild(match); element != end;
         element = document.behind(element)) {
        if (filterHolds(document, element, step)) {
            passed.push_back(element);
        }
    }
}

/// Visits the children of one node; below those that do not match, too, when the step searches at
/// any depth: the nodes behind a node are its descendants, in document order.
void applyStep(const JsonDocument& document, Node node, const PathStep& step, Nodes& passed) {
    if (!document.isContainer(node)) {
        return;
    }
    const bool anyName = step.name == "*";
    const Node end = document.behind(node);
    for (Node child = JsonDocument::firstChild(node); child != end;) {
        const bool matches = anyName || document.name(child) == step.name;
        if (matches) {
            passMatch(document, child, step, passed);
        }
        child = matches || step.directChildren ? document.behind(child) : child + 1;
    }
}

}  // namespace

std::vector<Node> selectNodes(const JsonDocument& document, const std::vector<PathStep>& path) {
    Nodes nodes{JsonDocument::ROOT};
    for (const PathStep& step : path) {
        Nodes passed;
        for (const Node node : nodes) {
            applyStep(document, node, step, passed);
        }
        nodes = std::move(passed);
    }
    return nodes;
}

}  // namespace intake
