#include "workbench/cli/serve/parsed_json.h"

#include <cstring>
#include <stdexcept>
#include <utility>

namespace workbench {

using intake::JsonDocument;

std::optional<JsonDocument> parsedJson(std::string_view text) {
    intake::ByteBuffer bytes;
    char* const start = bytes.prepare(text.size() + 1);
    std::memcpy(start, text.data(), text.size());
    start[text.size()] = 0;
    bytes.commit(text.size() + 1);
    try {
        return JsonDocument(std::move(bytes));
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

std::string_view memberText(const JsonDocument& json, JsonDocument::Node object,
                            std::string_view name) {
    const auto found = json.find(object, name);
    return found == JsonDocument::NONE || json.isContainer(found) ? "" : json.asString(found);
}

}  // namespace workbench
