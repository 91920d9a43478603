#include "tests/support/json_dump.h"

#include <vector>

#include "tests/support/in_quotes.h"

namespace intake {

namespace {

using Node = JsonDocument::Node;
using Type = JsonDocument::Type;

std::string describe(const JsonDocument& document, Node node) {
    if (document.isContainer(node)) {
        return (document.type(node) == Type::ARRAY ? "array of " : "object of ") +
               std::to_string(document.childCount(node)) + ", behind it " +
               std::to_string(document.behind(node));
    }
    const std::string text(document.asString(node));
    switch (document.type(node)) {
        case Type::STRING:
            return "string " + inQuotes(text);
        case Type::NUMBER:
            return "number " + text;
        default:
            return text;
    }
}

}  // namespace

std::string dumpJson(const JsonDocument& document) {
    std::string out;
    std::vector<Node> ends;  // of the containers around a node
    for (Node node = JsonDocument::ROOT; node != document.behind(JsonDocument::ROOT); ++node) {
        while (!ends.empty() && ends.back() == node) {
            ends.pop_back();
        }
        out += std::to_string(node) + std::string(1 + ends.size() * 2, ' ');
        out += document.name(node).empty() ? "" : std::string(document.name(node)) + ": ";
        out += describe(document, node) + "\n";
        if (document.isContainer(node)) {
            ends.push_back(document.behind(node));
        }
    }
    return out;
}

}  // namespace intake
