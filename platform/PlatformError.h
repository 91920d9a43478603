#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace intake {

/// A service of the system that failed in the middle of a step, in the terms of COM errors on every
/// system. Thrown by platform adapters; the worker turns it into the COM error report.
class PlatformError : public std::exception {
public:
    PlatformError(uint32_t code, std::string meaning, std::string source, std::string description)
        : code_(code),
          meaning_(std::move(meaning)),
          source_(std::move(source)),
          description_(std::move(description)) {}

    uint32_t code() const { return code_; }
    const std::string& meaning() const { return meaning_; }
    const std::string& source() const { return source_; }
    const std::string& description() const { return description_; }

    const char* what() const noexcept override { return description_.c_str(); }

private:
    uint32_t code_;
    std::string meaning_;  // the system's text for the code
    std::string source_;   // the component that failed
    std::string description_;
};

}  // namespace intake
