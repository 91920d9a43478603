#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "formats/json/JsonDocument.h"

namespace intake {

/// Writes nodes of a document, with all that is below them, as assignments of a result script. Made
/// for one request; worker thread. It does not recurse, so that depth costs no stack.
class JsonWalker {
public:
    using Node = JsonDocument::Node;

    /// How a node stands in what contains it: as a named member, or as an element of a list, where
    /// an object has no name.
    enum class Role { MEMBER, ELEMENT };

    /// Both are borrowed and outlive this object; the script is appended to.
    JsonWalker(const JsonDocument& document, std::string& script)
        : document_(document), script_(script) {}

    /// Writes one node; `fallbackName` names it when it has no name of its own.
    void walk(Node root, std::string_view fallbackName, Role role);

    /// Writes the elements of a flat array, each followed by a comma; a null writes nothing.
    void writeElements(Node flatArray);

private:
    struct OpenContainer {
        Node behind;
        Role childRole;
        std::string_view closing;
    };

    /// Writes a scalar or a flat array whole, or the opening of a container. Returns the node to
    /// write next.
    Node write(Node node, std::string_view name, Role role);
    Node writeArray(Node array, std::string_view name);
    Node openObject(Node object, std::string_view name, Role role);
    void writeScalar(Node scalar, std::string_view name);
    void writeValue(Node scalar);
    void closeContainersBefore(Node node) {
        while (!open_.empty() && open_.back().behind == node) {
            script_.append(open_.back().closing);
            open_.pop_back();
        }
    }

    const JsonDocument& document_;
    std::string& script_;
    std::vector<OpenContainer> open_;  // kept from walk to walk for its memory
};

}  // namespace intake
