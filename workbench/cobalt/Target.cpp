#include "workbench/cobalt/Target.h"

#include <charconv>
#include <string>
#include <utility>

#include "formats/text/ascii.h"
#include "formats/text/trim.h"

namespace cobalt {

namespace {

// "0-3" or "0--1". Anything else in the brackets is a key.
bool readRange(std::string_view brackets, Target& target) {
    if (brackets.empty() || !intake::isDigit(brackets.front())) return false;
    const char* end = brackets.data() + brackets.size();
    const auto [dash, error] = std::from_chars(brackets.data(), end, target.first);
    if (error != std::errc() || dash == end || *dash != '-') return false;
    const auto [stop, lastError] = std::from_chars(dash + 1, end, target.last);
    return lastError == std::errc() && stop == end;
}

void readBrackets(Cursor& cursor, Target& target) {
    const std::size_t opening = cursor.offset();
    cursor.advance();
    const std::size_t closing = cursor.findAny("]");
    if (closing == cursor.text().size()) {
        cursor.moveTo(opening);
        cursor.fail("expected a ']' for this '['");
    }
    target.key = cursor.readTo(closing);
    cursor.advance();
    target.kind = readRange(target.key, target) ? Target::Kind::Range : Target::Kind::Entry;
}

// Unsigned: the number behind the last element may be one too large for a range.
Entries numbered(std::vector<Value> values, std::uint64_t first) {
    Entries entries;
    for (Value& value : values)
        entries.define(std::to_string(first++)) = std::move(value);
    entries.shrinkToFit();
    return entries;
}

Entries numbered(const Entries& elements, std::uint64_t first) {
    Entries entries;
    for (const Entry& element : elements)
        entries.define(std::to_string(first++)) = element.value;
    return entries;
}

}  // namespace

Target readTarget(Cursor& cursor) {
    Target target;
    const std::size_t end = cursor.findAny("=[");
    if (end == cursor.text().size()) cursor.failExpected("an assignment such as name=value;");
    target.name = intake::trimmed(cursor.readTo(end), BLANKS);
    if (cursor.peek() != '[') return target;
    readBrackets(cursor, target);
    cursor.skipBlanks();
    if (cursor.peek() != '=') cursor.failExpected("'=' after the ']'");
    return target;
}

std::string entrySetBy(std::string_view brackets) {
    Target target;
    return readRange(brackets, target) ? std::to_string(target.first) : std::string(brackets);
}

void requireRoom(const Target& target, std::size_t count, std::size_t offset) {
    if (target.kind != Target::Kind::Range || count == 0) return;
    const std::string range = "the range [" + std::string(target.key) + "]";
    if (target.last < target.first) {
        throw ParseFailure{offset, "expected no value for " + range + ", which is empty"};
    }
    const auto room = static_cast<std::uint64_t>(target.last - target.first) + 1;
    if (count <= room) return;
    throw ParseFailure{offset, "expected at most " + std::to_string(room) + " values for " + range +
                                   ", found " + std::to_string(count)};
}

Value combine(const Target& target, AssignedValues assigned) {
    std::vector<Value>& values = assigned.values;
    const bool isRange = target.kind == Target::Kind::Range;
    const bool isOne = values.size() == 1 && !assigned.separated;
    const auto first = static_cast<std::uint64_t>(target.first);
    if (isOne && isRange && values.front().kind() == Kind::Array) {
        if (first == 0) return std::move(values.front());
        return Value::array(numbered(values.front().entries(), first));
    }
    if (isRange) return Value::array(numbered(std::move(values), first));
    if (values.empty()) return Value();
    if (isOne) return std::move(values.front());
    return Value::array(numbered(std::move(values), 0));
}

void assign(Value& slot, const Target& target, Value value, Origin origin) {
    switch (target.kind) {
        case Target::Kind::Whole:
            slot = std::move(value);
            return;
        case Target::Kind::Entry:
            slot.assignEntry(target.key, std::move(value), origin);
            return;
        case Target::Kind::Range:
            slot.assignEntries(std::move(value).takeEntries(), origin);
            return;
    }
}

}  // namespace cobalt
