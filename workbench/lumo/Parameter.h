#pragma once

// One parameter as the plugin registered it.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {

enum class ParameterKind { String, Bool, Radio, Float, Int, Container, Text, PushButton, UserData };

struct Parameter {
    ParameterKind kind = ParameterKind::String;
    std::string name;
    std::string label;
    std::string initialText;
    double initialNumber = 0;  // of a bool, radio, float or int
    double minimum = 0;
    double maximum = 0;
    int32_t width = 0;
    int32_t height = 0;
    int32_t capacity = 0;  // of a text: the bytes of its buffer, the terminator included
    std::vector<std::string> entries;
    int32_t action = 0;
    int32_t userDataSize = 0;
    bool persistent = false;
    bool hidden = false;
};

/// What a parameter of this kind is called in front of users.
std::string_view kindName(ParameterKind kind);

/// Whether the record holds a pointer to a text for it.
bool isText(const Parameter& parameter);

/// Whether it has a value that a user can set.
bool hasValue(const Parameter& parameter);

}  // namespace lumo
