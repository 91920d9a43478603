#include "tests/formats/json/parse.h"

#include <stdexcept>
#include <utility>

namespace intake {

namespace {

using Node = JsonDocument::Node;
using Type = JsonDocument::Type;

std::string framed(const char* opening, std::string_view text, const char* closing) {
    return std::string(opening).append(text).append(closing);
}

std::string outlineChildren(const JsonDocument& document, Node container) {
    std::string text;
    for (Node child = JsonDocument::firstChild(container); child != document.behind(container);
         child = document.behind(child)) {
        text += text.empty() ? "" : ", ";
        if (document.type(container) == Type::OBJECT) {
            text.append(document.name(child)).append(": ");
        }
        text += outline(document, child);
    }
    return text;
}

}  // namespace

JsonDocument parse(std::string_view text) {
    ByteBuffer buffer;
    char* const bytes = buffer.prepare(text.size() + 1);
    text.copy(bytes, text.size());
    bytes[text.size()] = 0;
    buffer.commit(text.size() + 1);
    return JsonDocument(std::move(buffer));
}

std::string parseError(std::string_view text) {
    try {
        parse(text);
        return "accepted";
    } catch (const std::invalid_argument& refusal) {
        return refusal.what();
    }
}

std::string inArray(std::string_view text) {
    return framed("[", text, "]");
}

std::string outline(const JsonDocument& document, Node node) {
    switch (document.type(node)) {
        case Type::ARRAY:
            return inArray(outlineChildren(document, node));
        case Type::OBJECT:
            return framed("{", outlineChildren(document, node), "}");
        case Type::STRING:
            return framed("\"", document.asString(node), "\"");
        default:
            return std::string(document.asString(node));
    }
}

}  // namespace intake
