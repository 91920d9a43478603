#include "readers/json/JsonWalker.h"

#include "formats/text/six_digits.h"
#include "pipeline/script_text.h"

namespace intake {

using Type = JsonDocument::Type;

void JsonWalker::walk(Node root, std::string_view fallbackName, Role role) {
    const Node end = document_.behind(root);
    const std::string_view rootName = document_.name(root);
    Node node = write(root, rootName.empty() ? fallbackName : rootName, role);
    while (node != end) {
        closeContainersBefore(node);
        node = write(node, document_.name(node), open_.back().childRole);
    }
    closeContainersBefore(end);
}

JsonWalker::Node JsonWalker::write(Node node, std::string_view name, Role role) {
    switch (document_.type(node)) {
        case Type::ARRAY:
            return writeArray(node, name);
        case Type::OBJECT:
            return openObject(node, name, role);
        default:
            writeScalar(node, name);
            return document_.behind(node);
    }
}

JsonWalker::Node JsonWalker::writeArray(Node array, std::string_view name) {
    appendRangeHead(script_, name, document_.childCount(array));
    if (document_.isFlatArray(array)) {
        writeElements(array);
        script_ += ';';
        return document_.behind(array);
    }
    script_ += '{';
    open_.push_back({document_.behind(array), Role::ELEMENT, "};"});
    return JsonDocument::firstChild(array);
}

JsonWalker::Node JsonWalker::openObject(Node object, std::string_view name, Role role) {
    if (role == Role::ELEMENT) {
        script_ += '{';
    } else {
        script_.append(name).append("={");
    }
    open_.push_back({document_.behind(object), Role::MEMBER, role == Role::ELEMENT ? "}," : "};"});
    return JsonDocument::firstChild(object);
}

void JsonWalker::writeScalar(Node scalar, std::string_view name) {
    switch (document_.type(scalar)) {
        case Type::NULL_VALUE:
            return;
        case Type::STRING:  // the most frequent, in few pieces
            script_.append(name).append("=\"\"").append(document_.asString(scalar));
            script_.append("\"\";");
            return;
        default:
            script_.append(name) += '=';
            writeValue(scalar);
            script_ += ';';
    }
}

void JsonWalker::writeElements(Node flatArray) {
    const Node end = document_.behind(flatArray);
    for (Node element = JsonDocument::firstChild(flatArray); element != end; ++element) {
        if (document_.type(element) != Type::NULL_VALUE) {
            writeValue(element);
            script_ += ',';
        }
    }
}

void JsonWalker::writeValue(Node scalar) {
    switch (document_.type(scalar)) {
        case Type::STRING:
            return appendFramed(script_, document_.asString(scalar));
        case Type::NUMBER:
            return appendSixDigits(script_, document_.asString(scalar));
        default:
            script_ += document_.asBool(scalar) ? '1' : '0';
    }
}

}  // namespace intake
