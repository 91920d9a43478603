#include "workbench/lumo/Parameter.h"

namespace lumo {

std::string_view kindName(ParameterKind kind) {
    constexpr std::string_view names[] = {"string",    "bool", "radio",  "float",    "int",
                                          "container", "text", "button", "user data"};
    return names[static_cast<std::size_t>(kind)];
}

bool isText(const Parameter& parameter) {
    return parameter.kind == ParameterKind::String || parameter.kind == ParameterKind::Container ||
           parameter.kind == ParameterKind::Text;
}

bool hasValue(const Parameter& parameter) {
    return parameter.kind != ParameterKind::PushButton && parameter.kind != ParameterKind::UserData;
}

}  // namespace lumo
