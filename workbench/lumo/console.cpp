// The console calls of host/lumo.h. The console is standard error.

#include <cstdio>
#include <cwchar>
#include <string>
#include <vector>

#include "formats/text/utf8.h"
#include "host/lumo.h"
#include "workbench/lumo/Host.h"

namespace {

lumo::Host& host() {
    return lumo::Host::current();
}

std::string formatted(const char* format, va_list arguments) {
    va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    if (length < 0) return format;
    std::string text(static_cast<std::size_t>(length), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    return text;
}

// vswprintf does not tell the length that it needs, so the room doubles until the text fits.
std::wstring formatted(const wchar_t* format, va_list arguments) {
    constexpr std::size_t largest = 1 << 20;
    for (std::size_t room = 256; room <= largest; room *= 2) {
        std::vector<wchar_t> buffer(room);
        va_list again;
        va_copy(again, arguments);
        const int length = std::vswprintf(buffer.data(), room, format, again);
        va_end(again);
        if (length >= 0) return std::wstring(buffer.data(), static_cast<std::size_t>(length));
    }
    return format;
}

// A byte stream must not be written as a wide one, so the characters are encoded here.
std::string narrow(const std::wstring& text) {
    std::string out;
    for (const wchar_t c : text)
        intake::appendUtf8(static_cast<char32_t>(c), out);
    return out;
}

int32_t print(const char* function, const std::string& text) {
    host().trace.call(function, text);
    std::fputs(text.c_str(), stderr);
    return static_cast<int32_t>(text.size());
}

}  // namespace

extern "C" {

int32_t _lumoprintf(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string text = formatted(format, arguments);
    va_end(arguments);
    return print("_lumoprintf", text);
}

int32_t _lumowprintf(const wchar_t* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string text = narrow(formatted(format, arguments));
    va_end(arguments);
    return print("_lumowprintf", text);
}

int32_t _lumovprintf(const char* format, va_list arguments) {
    return print("_lumovprintf", formatted(format, arguments));
}

int32_t _lumovwprintf(const wchar_t* format, va_list arguments) {
    return print("_lumovwprintf", narrow(formatted(format, arguments)));
}

}  // extern "C"
