// Registration, the editor and the console.

#include <array>
#include <cstdio>

#include "host/lumo.h"
#include "tests/fakes/host/FakeHost.h"

void evSetPersistent(int32_t persistent) {
    fakeHost().called("evSetPersistent", persistent);
}

void evRegisterPlugin(const char* name) {
    fakeHost().called("evRegisterPlugin", name);
}

void evRegisterPluginFolder(const char* folder) {
    fakeHost().called("evRegisterPluginFolder", folder);
}

void evRegisterPluginType(int32_t type) {
    fakeHost().called("evRegisterPluginType", type);
}

void evRegisterPluginVersion(int32_t major, int32_t minor, int32_t patch) {
    fakeHost().called("evRegisterPluginVersion", major, minor, patch);
}

void evRegisterInfoText(const char* topic, const char* text) {
    fakeHost().called("evRegisterInfoText", topic, text);
}

void evRegisterParameterString(const char* name, const char* label, const char* initial,
                               int32_t width, int32_t maxLength, int32_t reserved) {
    fakeHost().called("evRegisterParameterString", name, label, initial, width, maxLength,
                      reserved);
}

void evRegisterParameterBool(const char* name, const char* label, int32_t initial) {
    fakeHost().called("evRegisterParameterBool", name, label, initial);
}

void evRegisterParameterRadio(const char* name, const char* label, int32_t initial,
                              const char* const* entries) {
    fakeHost().called("evRegisterParameterRadio", name, label, initial, entries);
}

void evRegisterParameterFloat(const char* name, const char* label, float initial, float minimum,
                              float maximum) {
    fakeHost().called("evRegisterParameterFloat", name, label, initial, minimum, maximum);
}

void evRegisterParameterInt(const char* name, const char* label, int32_t initial, int32_t minimum,
                            int32_t maximum) {
    fakeHost().called("evRegisterParameterInt", name, label, initial, minimum, maximum);
}

void evRegisterParameterContainer(const char* name, const char* label, const char* initial) {
    fakeHost().called("evRegisterParameterContainer", name, label, initial);
}

void evRegisterParameterText(const char* name, const char* initial, int32_t width, int32_t height) {
    fakeHost().called("evRegisterParameterText", name, initial, width, height);
}

void evRegisterPushButton(const char* name, const char* label, int32_t action) {
    fakeHost().called("evRegisterPushButton", name, label, action);
}

void evRegisterUserData32(int32_t size) {
    fakeHost().called("evRegisterUserData32", size);
}

void evHideParameter() {
    fakeHost().called("evHideParameter");
}

void evSendGuiParameterShow(const char* name, int32_t shown) {
    fakeHost().called("evSendGuiParameterShow", name, shown);
}

void evSendGuiRefresh() {
    fakeHost().called("evSendGuiRefresh");
}

int32_t _lumovprintf(const char* format, va_list arguments) {
    std::array<char, 4096> text{};
    const int length = std::vsnprintf(text.data(), text.size(), format, arguments);
    fakeHost().called("_lumoprintf", text.data());
    return length;
}

int32_t _lumoprintf(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int32_t length = _lumovprintf(format, arguments);
    va_end(arguments);
    return length;
}

int32_t _lumovwprintf(const wchar_t*, va_list) {
    fakeHost().called("_lumowprintf");
    return 0;
}

int32_t _lumowprintf(const wchar_t*, ...) {
    fakeHost().called("_lumowprintf");
    return 0;
}
