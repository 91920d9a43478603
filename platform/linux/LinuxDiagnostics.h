#pragma once

#include "platform/Diagnostics.h"

namespace intake {

/// The debugger's output is standard error here, and there is no console window apart from standard
/// output.
class LinuxDiagnostics final : public Diagnostics {
public:
    bool lastErrorText(std::string& text) override;
    void debugOutput(const char* text) override;
    bool hasConsole() override;
    void writeConsoleWindow(std::string_view text) override;
};

}  // namespace intake
