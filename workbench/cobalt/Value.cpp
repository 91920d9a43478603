#include "workbench/cobalt/Value.h"

#include <utility>

#include "workbench/cobalt/number_text.h"

namespace cobalt {

Value Value::text(std::string text) {
    Value value;
    value.content_.emplace<std::string>(std::move(text));
    return value;
}

Value Value::number(double number) {
    Value value;
    value.content_.emplace<Number>(Number{formatNumber(number)});
    return value;
}

Value Value::structure(Entries members) {
    Value value;
    value.content_.emplace<Structure>(Structure{std::move(members)});
    return value;
}

Value Value::array(Entries elements) {
    Value value;
    value.content_.emplace<Array>(Array{std::move(elements)});
    return value;
}

Value Value::fromUnquoted(std::string_view written) {
    if (!parseNumber(written)) return text(std::string(written));
    Value value;
    value.content_.emplace<Number>(Number{std::string(written)});
    return value;
}

const std::string& Value::text() const {
    static const std::string none;
    if (const auto* text = std::get_if<std::string>(&content_)) return *text;
    if (const auto* number = std::get_if<Number>(&content_)) return number->written;
    return none;
}

double Value::number() const {
    const auto* number = std::get_if<Number>(&content_);
    return number ? parseNumber(number->written).value_or(0) : 0;
}

const Entries& Value::entries() const {
    static const Entries none;
    if (const auto* structure = std::get_if<Structure>(&content_)) return structure->members;
    if (const auto* array = std::get_if<Array>(&content_)) return array->elements;
    return none;
}

Entries Value::takeEntries() && {
    if (auto* structure = std::get_if<Structure>(&content_)) return std::move(structure->members);
    if (auto* array = std::get_if<Array>(&content_)) return std::move(array->elements);
    return {};
}

void Value::assignEntry(std::string_view key, Value value, Origin origin) {
    Entry& entry = requireEntries().defineEntry(key);
    entry.value = std::move(value);
    entry.origin = origin;
}

void Value::assignEntries(Entries entries, Origin origin) {
    requireEntries().merge(std::move(entries), origin);
}

Entries& Value::requireEntries() {
    if (auto* structure = std::get_if<Structure>(&content_)) return structure->members;
    if (isScalar()) content_.emplace<Array>();
    return std::get<Array>(content_).elements;
}

}  // namespace cobalt
