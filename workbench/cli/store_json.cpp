#include "workbench/cli/store_json.h"

#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/value_text.h"

namespace workbench {

namespace {

using cobalt::Kind;
using cobalt::Value;

void write(const Value& value, bool rows, JsonWriter& out) {
    switch (value.kind()) {
        case Kind::Text:
            out.text(value.text());
            return;
        case Kind::Number:
            out.number(value.text(), value.number());
            return;
        default:
            break;
    }
    const bool list = isList(value);
    out.open(list ? '[' : '{');
    for (const cobalt::Entry& entry : value.entries()) {
        if (!list) out.name(entry.key);
        write(rows ? unwrapped(entry.value) : entry.value, false, out);
    }
    out.close(list ? ']' : '}');
}

}  // namespace

std::string storeJson(const cobalt::Store& store) {
    JsonWriter out;
    out.open('{');
    for (const cobalt::Field& field : store) {
        out.name(field.name());
        write(field.value(), field.value().kind() == Kind::Array, out);
    }
    out.close('}');
    return out.take();
}

}  // namespace workbench
