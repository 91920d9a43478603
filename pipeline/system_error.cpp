#include "pipeline/system_error.h"

#include <array>
#include <cstdio>
#include <string>

namespace intake {

void reportSystemError(Diagnostics& diagnostics, const char* prefix) {
    std::string reason;
    if (!diagnostics.lastErrorText(reason)) {
        return;
    }
    std::array<char, 1024> text{};
    std::snprintf(text.data(), text.size(), "ERROR: %s: %s\n", prefix, reason.c_str());
    diagnostics.debugOutput(text.data());
}

}  // namespace intake
