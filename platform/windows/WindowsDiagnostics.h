#pragma once

#include "platform/Diagnostics.h"

namespace intake {

class WindowsDiagnostics final : public Diagnostics {
public:
    bool lastErrorText(std::string& text) override;
    void debugOutput(const char* text) override;
    bool hasConsole() override;
    void writeConsoleWindow(std::string_view text) override;
};

}  // namespace intake
