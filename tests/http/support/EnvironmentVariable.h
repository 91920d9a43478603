#pragma once

#include <optional>
#include <string>

namespace intake {

/// Gives an environment variable a value, or takes it away, for as long as this object lives.
class EnvironmentVariable {
public:
    EnvironmentVariable(const char* name, const std::optional<std::string>& value);
    ~EnvironmentVariable() { set(before_); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    void set(const std::optional<std::string>& value) const;

    const char* name_;
    std::optional<std::string> before_;
};

}  // namespace intake
