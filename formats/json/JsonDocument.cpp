#include "formats/json/JsonDocument.h"

#include <cstring>
#include <utility>

#include "formats/json/json_parse.h"

namespace intake {

JsonDocument::JsonDocument(ByteBuffer text) : text_(std::move(text)) {
    std::memset(text_.prepare(BYTES_READ_BEHIND), 0, BYTES_READ_BEHIND);
    parseJson(text_.data(), text_.size(), entries_);
}

JsonDocument::Node JsonDocument::find(Node node, std::string_view name) const {
    if (type(node) != Type::OBJECT) {
        return NONE;
    }
    for (Node child = firstChild(node); child != behind(node); child = behind(child)) {
        if (this->name(child) == name) {
            return child;
        }
    }
    return NONE;
}

bool JsonDocument::isFlatArray(Node node) const {
    if (type(node) != Type::ARRAY || behind(node) != firstChild(node) + childCount(node)) {
        return false;
    }
    for (Node child = firstChild(node); child != behind(node); ++child) {
        if (isContainer(child)) {
            return false;
        }
    }
    return true;
}

std::string_view JsonDocument::asString(Node node) const {
    const JsonEntry& entry = entries_[node];
    switch (type(node)) {
        case Type::STRING:
        case Type::NUMBER:
            return {text_.data() + entry.position, entry.length};
        case Type::BOOL:
            return asBool(node) ? "true" : "false";
        case Type::NULL_VALUE:
            return "null";
        default:
            return {};
    }
}

}  // namespace intake
