#include "pipeline/messages.h"

#include <array>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <string>

namespace intake {

namespace {

constexpr size_t LONGEST_MESSAGE = 1023;

/// A message and the zero behind it.
using Message = std::array<char, LONGEST_MESSAGE + 1>;

void writeToWindow(Diagnostics& diagnostics, const char* format, va_list arguments) {
    Message text{};
    std::vsnprintf(text.data(), text.size(), format, arguments);
    diagnostics.writeConsoleWindow(text.data());
}

}  // namespace

void printToConsole(Diagnostics& diagnostics, const char* format, ...) {
    if (!diagnostics.hasConsole()) {
        return;
    }
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    writeToWindow(diagnostics, format, arguments);
    std::vprintf(format, again);
    std::fflush(stdout);
    va_end(again);
    va_end(arguments);
}

void reportSystemError(Diagnostics& diagnostics, const char* prefix) {
    std::string reason;
    if (!diagnostics.lastErrorText(reason)) {
        return;
    }
    Message text{};
    std::snprintf(text.data(), text.size(), "ERROR: %s: %s\n", prefix, reason.c_str());
    diagnostics.debugOutput(text.data());
}

}  // namespace intake
