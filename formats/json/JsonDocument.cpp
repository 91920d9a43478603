#include "formats/json/JsonDocument.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "formats/json/json_parse.h"

namespace intake {

JsonDocument::JsonDocument(ByteBuffer text) {
    entries_.reserve(text.size() / 6 + 1);  // a typical density; what is not touched costs nothing
    parse(std::move(text), {{}, 0, 1, [] {}});
}

int64_t JsonDocument::readRows(ByteBuffer text, const JsonRowQuery& query) {
    return parse(std::move(text), {query.path, query.first, query.end, [this, &query] {
                                       query.take();
                                       entries_.clear();
                                   }});
}

int64_t JsonDocument::parse(ByteBuffer text, const JsonRowQuery& query) {
    text_ = std::move(text);
    std::memset(text_.prepare(BYTES_READ_BEHIND), 0, BYTES_READ_BEHIND);
    return parseJson(text_.data(), text_.size(), query, entries_);
}

size_t JsonDocument::sourceOffsetBehind(Node node) const {
    const JsonEntry& last = entries_[behind(node) - 1];
    const bool isText =
        type(behind(node) - 1) == Type::STRING || type(behind(node) - 1) == Type::NUMBER;
    return std::max<size_t>(last.nameOffset, isText ? last.position : 0);
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
