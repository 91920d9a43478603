#include "workbench/cli/value_text.h"

#include <algorithm>

#include "formats/text/utf8.h"
#include "workbench/cli/display_text.h"

namespace workbench {

namespace {

constexpr std::size_t longest = 200;  // bytes of a nested value; no cell shows more

void append(const cobalt::Value& value, std::string& out);

/// Whether a byte of UTF-8 is not the first of its character.
bool isWithinCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// As much of a text as has what is shown of it, broken between characters.
std::string_view beginOf(std::string_view text) {
    std::size_t end = std::min(text.size(), longest * intake::LONGEST_UTF8);
    while (end > 0 && end < text.size() && isWithinCharacter(text[end]))
        --end;
    return text.substr(0, end);
}

bool hasKeysInOrder(const cobalt::Value& array, std::size_t most) {
    const cobalt::Entries& entries = array.entries();
    for (std::size_t i = 0; i < std::min(most, entries.size()); ++i) {
        if (entries[i].key != std::to_string(i)) return false;
    }
    return true;
}

/// As far as it is shown.
bool beginsAsList(const cobalt::Value& value) {
    return value.kind() == cobalt::Kind::Array && hasKeysInOrder(value, longest);
}

void appendEntries(const cobalt::Value& value, bool named, std::string& out) {
    bool first = true;
    for (const cobalt::Entry& entry : value.entries()) {
        if (!first) out += ", ";
        first = false;
        if (out.size() > longest) {
            out += "…";
            return;
        }
        if (named) out += toUtf8(entry.key) + ": ";
        append(entry.value, out);
    }
}

void append(const cobalt::Value& value, std::string& out) {
    if (value.isScalar()) {
        const std::string_view shown = beginOf(value.text());
        out += toUtf8(shown) + (shown.size() < value.text().size() ? "…" : "");
        return;
    }
    const bool structure = value.kind() == cobalt::Kind::Structure;
    out += structure ? '{' : '[';
    appendEntries(value, structure || !beginsAsList(value), out);
    out += structure ? '}' : ']';
}

}  // namespace

std::string inlineText(const cobalt::Value& value) {
    if (value.isScalar()) return toUtf8(value.text());
    std::string out;
    append(value, out);
    return out;
}

std::string startOf(const cobalt::Value& value) {
    if (!value.isScalar()) return fitted(inlineText(value), longest);
    return fitted(toUtf8(beginOf(value.text())), longest);
}

bool isList(const cobalt::Value& array) {
    return array.kind() == cobalt::Kind::Array && hasKeysInOrder(array, array.entries().size());
}

const cobalt::Value& unwrapped(const cobalt::Value& value) {
    const bool wraps = isList(value) && value.entries().size() == 1 &&
                       value.entries()[0].value.kind() == cobalt::Kind::Structure;
    return wraps ? value.entries()[0].value : value;
}

}  // namespace workbench
