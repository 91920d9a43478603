#pragma once

#include <map>
#include <mutex>
#include <string>
#include <thread>

#include "platform/Diagnostics.h"

namespace intake {

/// Keeps what would have been shown. Every thread has a last error of its own, as on a real system.
/// Any thread.
class FakeDiagnostics final : public Diagnostics {
public:
    bool lastErrorText(std::string& text) override;
    void debugOutput(const char* text) override;
    bool hasConsole() override;
    void writeConsoleWindow(std::string_view text) override;

    /// Sets the calling thread's last error; an empty text takes it away.
    void setLastError(const std::string& text);
    void setHasConsole(bool hasConsole);

    /// All that was written so far.
    std::string debugText() const;
    std::string consoleWindowText() const;

private:
    mutable std::mutex mutex_;
    std::map<std::thread::id, std::string> lastErrors_;
    std::string debugText_;
    std::string consoleWindowText_;
    bool hasConsole_ = true;
};

}  // namespace intake
