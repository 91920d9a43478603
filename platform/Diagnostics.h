#pragma once

#include <string>
#include <string_view>

namespace intake {

/// Where the system shows what went wrong. Process-wide; any thread; never fails loudly.
class Diagnostics {
public:
    virtual ~Diagnostics() = default;

    /// The system's text for the calling thread's last error; false when it has none.
    virtual bool lastErrorText(std::string& text) = 0;

    /// Shows a text to whoever debugs the process.
    virtual void debugOutput(const char* text) = 0;

    /// Whether the process has a standard output.
    virtual bool hasConsole() = 0;

    /// Writes to the console window, where that is another place than standard output.
    virtual void writeConsoleWindow(std::string_view text) = 0;
};

}  // namespace intake
