// The registration calls of host/lumo.h: what the plugin says of itself in PLUGIN_INIT.

#include <algorithm>
#include <utility>

#include "host/lumo.h"
#include "workbench/lumo/Host.h"

namespace {

constexpr int32_t unlimitedTextCapacity = 4096;  // of the kinds that register no maximum

tracing::Trace& trace() {
    return lumo::Host::current().trace;
}
lumo::ParameterTable& parameters() {
    return lumo::Host::current().parameters;
}

lumo::Parameter named(lumo::ParameterKind kind, const char* name, const char* label) {
    lumo::Parameter parameter;
    parameter.kind = kind;
    parameter.name = name;
    parameter.label = label;
    return parameter;
}

lumo::Parameter text(lumo::ParameterKind kind, const char* name, const char* label,
                     const char* initial, int32_t capacity) {
    lumo::Parameter parameter = named(kind, name, label);
    parameter.initialText = initial;
    const auto needed = static_cast<int32_t>(parameter.initialText.size()) + 1;
    parameter.capacity = std::max(capacity, needed);
    return parameter;
}

lumo::Parameter number(lumo::ParameterKind kind, const char* name, const char* label,
                       double initial, double minimum, double maximum) {
    lumo::Parameter parameter = named(kind, name, label);
    parameter.initialNumber = initial;
    parameter.minimum = minimum;
    parameter.maximum = maximum;
    return parameter;
}

}  // namespace

extern "C" {

void evSetPersistent(int32_t persistent) {
    trace().call("evSetPersistent", persistent);
    parameters().setPersistent(persistent != 0);
}

void evRegisterPlugin(const char* name) {
    trace().call("evRegisterPlugin", name);
    parameters().identity.name = name;
}

void evRegisterPluginFolder(const char* folder) {
    trace().call("evRegisterPluginFolder", folder);
    parameters().identity.folder = folder;
}

void evRegisterPluginType(int32_t type) {
    trace().call("evRegisterPluginType", type);
    parameters().identity.type = type;
}

void evRegisterPluginVersion(int32_t major, int32_t minor, int32_t patch) {
    trace().call("evRegisterPluginVersion", major, minor, patch);
    parameters().identity.libraryVersion =
        std::to_string(major) + '.' + std::to_string(minor) + '.' + std::to_string(patch);
}

void evRegisterInfoText(const char* topic, const char* info) {
    trace().call("evRegisterInfoText", topic, info);
    if (std::string_view(topic) == "info") parameters().identity.info = info;
}

void evRegisterParameterString(const char* name, const char* label, const char* initial,
                               int32_t width, int32_t maxLength, int32_t reserved) {
    trace().call("evRegisterParameterString", name, label, initial, width, maxLength, reserved);
    auto parameter = text(lumo::ParameterKind::String, name, label, initial, maxLength);
    parameter.width = width;
    parameters().add(std::move(parameter));
}

void evRegisterParameterBool(const char* name, const char* label, int32_t initial) {
    trace().call("evRegisterParameterBool", name, label, initial);
    parameters().add(number(lumo::ParameterKind::Bool, name, label, initial, 0, 1));
}

void evRegisterParameterRadio(const char* name, const char* label, int32_t initial,
                              const char* const* entries) {
    trace().call("evRegisterParameterRadio", name, label, initial, entries);
    auto parameter = named(lumo::ParameterKind::Radio, name, label);
    parameter.initialNumber = initial;
    for (; *entries != nullptr; ++entries)
        parameter.entries.emplace_back(*entries);
    parameters().add(std::move(parameter));
}

void evRegisterParameterFloat(const char* name, const char* label, float initial, float minimum,
                              float maximum) {
    trace().call("evRegisterParameterFloat", name, label, initial, minimum, maximum);
    parameters().add(number(lumo::ParameterKind::Float, name, label, initial, minimum, maximum));
}

void evRegisterParameterInt(const char* name, const char* label, int32_t initial, int32_t minimum,
                            int32_t maximum) {
    trace().call("evRegisterParameterInt", name, label, initial, minimum, maximum);
    parameters().add(number(lumo::ParameterKind::Int, name, label, initial, minimum, maximum));
}

void evRegisterParameterContainer(const char* name, const char* label, const char* initial) {
    trace().call("evRegisterParameterContainer", name, label, initial);
    parameters().add(
        text(lumo::ParameterKind::Container, name, label, initial, unlimitedTextCapacity));
}

void evRegisterParameterText(const char* name, const char* initial, int32_t width, int32_t height) {
    trace().call("evRegisterParameterText", name, initial, width, height);
    auto parameter = text(lumo::ParameterKind::Text, name, "", initial, unlimitedTextCapacity);
    parameter.width = width;
    parameter.height = height;
    parameters().add(std::move(parameter));
}

void evRegisterPushButton(const char* name, const char* label, int32_t action) {
    trace().call("evRegisterPushButton", name, label, action);
    auto parameter = named(lumo::ParameterKind::PushButton, name, label);
    parameter.action = action;
    parameters().add(std::move(parameter));
}

void evRegisterUserData32(int32_t size) {
    trace().call("evRegisterUserData32", size);
    auto parameter = named(lumo::ParameterKind::UserData, "", "");
    parameter.userDataSize = size;
    parameters().add(std::move(parameter));
}

void evHideParameter() {
    trace().call("evHideParameter");
    parameters().hideLast();
}

}  // extern "C"
