#include "workbench/cli/value_text.h"

#include "workbench/cli/display_text.h"

namespace workbench {

namespace {

constexpr std::size_t longest = 200;  // bytes of a nested value; no cell shows more

void append(const cobalt::Value& value, std::string& out);

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
        out += toUtf8(value.text());
        return;
    }
    const bool structure = value.kind() == cobalt::Kind::Structure;
    out += structure ? '{' : '[';
    appendEntries(value, structure || !isList(value), out);
    out += structure ? '}' : ']';
}

}  // namespace

std::string inlineText(const cobalt::Value& value) {
    std::string out;
    append(value, out);
    return out;
}

bool isList(const cobalt::Value& array) {
    if (array.kind() != cobalt::Kind::Array) return false;
    std::size_t position = 0;
    for (const cobalt::Entry& entry : array.entries()) {
        if (entry.key != std::to_string(position++)) return false;
    }
    return true;
}

const cobalt::Value& unwrapped(const cobalt::Value& value) {
    const bool wraps = isList(value) && value.entries().size() == 1 &&
                       value.entries()[0].value.kind() == cobalt::Kind::Structure;
    return wraps ? value.entries()[0].value : value;
}

}  // namespace workbench
