#include "tests/http/support/EnvironmentVariable.h"

#include <cstdlib>

namespace intake {

EnvironmentVariable::EnvironmentVariable(const char* name, const std::optional<std::string>& value)
    : name_(name) {
    if (const char* const before = std::getenv(name)) {
        before_ = before;
    }
    set(value);
}

void EnvironmentVariable::set(const std::optional<std::string>& value) const {
    // An empty value takes the variable away.
    _putenv_s(name_, value ? value->c_str() : "");
}

}  // namespace intake
