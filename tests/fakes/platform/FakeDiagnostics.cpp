#include "tests/fakes/platform/FakeDiagnostics.h"

namespace intake {

bool FakeDiagnostics::lastErrorText(std::string& text) {
    const std::lock_guard lock(mutex_);
    const auto found = lastErrors_.find(std::this_thread::get_id());
    if (found == lastErrors_.end() || found->second.empty()) {
        return false;
    }
    text = found->second;
    return true;
}

void FakeDiagnostics::debugOutput(const char* text) {
    const std::lock_guard lock(mutex_);
    debugText_ += text;
}

bool FakeDiagnostics::hasConsole() {
    const std::lock_guard lock(mutex_);
    return hasConsole_;
}

void FakeDiagnostics::writeConsoleWindow(std::string_view text) {
    const std::lock_guard lock(mutex_);
    consoleWindowText_ += text;
}

void FakeDiagnostics::setLastError(const std::string& text) {
    const std::lock_guard lock(mutex_);
    lastErrors_[std::this_thread::get_id()] = text;
}

void FakeDiagnostics::setHasConsole(bool hasConsole) {
    const std::lock_guard lock(mutex_);
    hasConsole_ = hasConsole;
}

std::string FakeDiagnostics::debugText() const {
    const std::lock_guard lock(mutex_);
    return debugText_;
}

std::string FakeDiagnostics::consoleWindowText() const {
    const std::lock_guard lock(mutex_);
    return consoleWindowText_;
}

}  // namespace intake
