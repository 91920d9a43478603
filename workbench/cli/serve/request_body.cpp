#include "workbench/cli/serve/request_body.h"

#include <charconv>

#include "workbench/cli/serve/parsed_json.h"

namespace workbench {

namespace {

using intake::JsonDocument;

// Far more than there are parameters, and far longer than their names.
constexpr std::size_t mostValues = 200;
constexpr std::size_t longestName = 100;

/// Nothing where it is no whole number from 0 on.
std::optional<std::uint64_t> revisionOf(const JsonDocument& document) {
    const auto member = document.find(JsonDocument::ROOT, "revision");
    if (member == JsonDocument::NONE) return std::nullopt;
    const std::string_view digits = document.asString(member);
    std::uint64_t revision = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), revision);
    const bool isWhole = error == std::errc() && end == digits.data() + digits.size();
    return isWhole ? std::optional(revision) : std::nullopt;
}

}  // namespace

std::optional<EditRequest> editRequestIn(const std::string& body) {
    const auto document = parsedJson(body);
    if (!document) return std::nullopt;
    const auto revision = revisionOf(*document);
    const auto set = document->find(JsonDocument::ROOT, "set");
    const bool isWhole =
        revision && set != JsonDocument::NONE && document->type(set) == JsonDocument::Type::OBJECT;
    if (!isWhole) return std::nullopt;
    EditRequest request{*revision, {}};
    for (auto node = JsonDocument::firstChild(set); node != document->behind(set);
         node = document->behind(node)) {
        const bool isTooMuch =
            request.values.size() == mostValues || document->name(node).size() > longestName;
        if (document->isContainer(node) || isTooMuch) return std::nullopt;
        request.values.emplace_back(document->name(node), document->asString(node));
    }
    return request;
}

std::optional<std::uint64_t> revisionIn(const std::string& body) {
    const auto document = parsedJson(body);
    return document ? revisionOf(*document) : std::nullopt;
}

std::optional<JsonDocument> objectIn(const std::string& body) {
    auto document = parsedJson(body);
    const bool isObject =
        document && document->type(JsonDocument::ROOT) == JsonDocument::Type::OBJECT;
    return isObject ? std::move(document) : std::nullopt;
}

std::optional<std::string> textIn(const JsonDocument& document, const char* name,
                                  std::optional<std::string> absent) {
    const auto member = document.find(JsonDocument::ROOT, name);
    if (member == JsonDocument::NONE) return absent;
    if (document.type(member) != JsonDocument::Type::STRING) return std::nullopt;
    return std::string(document.asString(member));
}

std::optional<bool> truthIn(const JsonDocument& document, const char* name,
                            std::optional<bool> absent) {
    const auto member = document.find(JsonDocument::ROOT, name);
    if (member == JsonDocument::NONE) return absent;
    if (document.type(member) != JsonDocument::Type::BOOL) return std::nullopt;
    return document.asBool(member);
}

std::string textIn(const std::string& body, const char* name) {
    const auto document = parsedJson(body);
    return document ? textIn(*document, name).value_or("") : "";
}

bool isSetIn(const std::string& body, const char* name) {
    const auto document = parsedJson(body);
    return document && truthIn(*document, name).value_or(false);
}

}  // namespace workbench
