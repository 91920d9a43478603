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

std::string memberOf(const std::string& body, const char* name, JsonDocument::Type type) {
    const auto document = parsedJson(body);
    if (!document) return "";
    const auto member = document->find(JsonDocument::ROOT, name);
    const bool fits = member != JsonDocument::NONE && document->type(member) == type;
    return fits ? std::string(document->asString(member)) : "";
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

std::string textIn(const std::string& body, const char* name) {
    return memberOf(body, name, JsonDocument::Type::STRING);
}

bool isSetIn(const std::string& body, const char* name) {
    return memberOf(body, name, JsonDocument::Type::BOOL) == "true";
}

bool isUnclearIn(const std::string& body, const char* name) {
    return memberOf(body, name, JsonDocument::Type::BOOL).empty();
}

bool isToldIn(const std::string& body, const char* name) {
    const auto document = parsedJson(body);
    return document && document->find(JsonDocument::ROOT, name) != JsonDocument::NONE;
}

}  // namespace workbench
