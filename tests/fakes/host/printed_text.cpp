#include "tests/fakes/host/printed_text.h"

#include <array>
#include <cstdio>

#include "host/lumo.h"
#include "tests/fakes/host/FakeStore.h"

namespace {

/// The name of the function that is expected here, if it is that one.
template <class Function>
std::string nameOf(Function* function, Function* expected, const char* name) {
    if (function == nullptr) return "null";
    return function == expected ? name : "another function";
}

}  // namespace

std::string printed(const char* text) {
    return text == nullptr ? "null" : printed(std::string(text));
}

std::string printed(const std::string& text) {
    std::string quoted = "\"";
    for (const char each : text) {
        quoted += each == '\n' ? "\\n" : std::string(1, each);
    }
    return quoted + "\"";
}

std::string printed(int32_t number) {
    return std::to_string(number);
}

std::string printed(bool truth) {
    return truth ? "true" : "false";
}

std::string printed(float number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%g", static_cast<double>(number));
    return text.data();
}

std::string printed(const char* const* entries) {
    std::string list;
    for (; *entries != nullptr; ++entries) {
        list.append(list.empty() ? "" : ", ").append(printed(*entries));
    }
    return "{" + list + "}";
}

std::string printed(Cobalt* store) {
    return store == nullptr ? "null" : static_cast<FakeStore*>(store)->name();
}

std::string printed(DataField* field) {
    return field == nullptr ? "null" : static_cast<FakeField*>(field)->name();
}

std::string printed(DataVariableQuery* query) {
    return query == nullptr ? "null" : "query";
}

std::string printed(DataCommandFunction command) {
    return nameOf(command, _api__lumo_send_command, "_api__lumo_send_command");
}

std::string printed(int32_t (*print)(const char*, ...)) {
    return nameOf(print, _lumoprintf, "_lumoprintf");
}

std::string printed(int32_t (*print)(const wchar_t*, ...)) {
    return nameOf(print, _lumowprintf, "_lumowprintf");
}

std::string printed(int32_t (*print)(const char*, va_list)) {
    return nameOf(print, _lumovprintf, "_lumovprintf");
}

std::string printed(int32_t (*print)(const wchar_t*, va_list)) {
    return nameOf(print, _lumovwprintf, "_lumovwprintf");
}
