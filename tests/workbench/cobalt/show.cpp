#include "tests/workbench/cobalt/show.h"

namespace cobalt {

namespace {

std::string showEntries(const Entries& entries) {
    std::string shown;
    for (const Entry& entry : entries) {
        if (!shown.empty()) shown += ", ";
        shown += entry.key + ": " + show(entry.value);
    }
    return shown;
}

std::string enclosed(char opening, const std::string& text, char closing) {
    return opening + text + closing;
}

}  // namespace

std::string show(const Value& value) {
    switch (value.kind()) {
        case Kind::Text:
            return enclosed('"', value.text(), '"');
        case Kind::Number:
            return value.text();
        case Kind::Structure:
            return enclosed('{', showEntries(value.entries()), '}');
        case Kind::Array:
            return enclosed('[', showEntries(value.entries()), ']');
    }
    return "a value of no kind";
}

std::string show(const Store& store) {
    std::string shown;
    for (const Field& field : store)
        shown += field.name() + " = " + show(field.value()) + "\n";
    return shown;
}

std::string show(const ScriptError& error) {
    return std::to_string(error.line) + ":" + std::to_string(error.column) + " " + error.message;
}

std::string execute(std::string_view script) {
    Store store;
    const std::optional<ScriptError> error = store.execute(script);
    return error ? show(*error) : show(store);
}

}  // namespace cobalt
